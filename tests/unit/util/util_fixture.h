// The shared procedures with fake ports, and the helpers that their tests share.
#pragma once

#include <string>
#include <vector>

#include "automation/date.h"
#include "fakes/ports_fixture.h"
#include "util/error_trap.h"
#include "util/session_settings.h"

namespace util {

inline automation::Date Day(int year, int month, int day) {
  return automation::MakeDate({year, month, day, 0, 0, 0});
}

// Far outside the years 100 to 9999.
inline constexpr automation::Date kNoDate{1e9};

class UtilTest : public fakes::PortsFixture {
 protected:
  UtilTest() {
    CurrentSettings() = {.gConnectionParameter = u"Driver=None",
                         .gKestraLangID = 1,
                         .gDbType = 1,
                         .gDateFormat = u"yyyy-MM-dd"};
    locale.UseSwedish();
  }
  // Like a workstation with US settings.
  void UseUsLocale() {
    locale.regional = {};
    locale.shortDateAnswer = u"M/d/yyyy";
    CurrentSettings().gDateFormat = u"M/d/yyyy";
  }
  // Like one with Norwegian settings.
  void UseNorwegianLocale() {
    locale.UseSwedish();
    locale.regional.shortDate = u"dd.MM.yyyy";
    locale.shortDateAnswer = u"dd.MM.yyyy";
    CurrentSettings().gDateFormat = u"dd.MM.yyyy";
  }

  // The box for an error in a procedure of the module.
  static platform::MessageBox ErrorBox(std::u16string text) {
    return {.text = std::move(text),
            .title = u"Vilnor Link connection",
            .icon = platform::Icon::Critical,
            .buttons = platform::Buttons::Ok};
  }
  using Boxes = std::vector<platform::MessageBox>;
};

}  // namespace util
