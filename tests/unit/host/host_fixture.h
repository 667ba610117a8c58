// A host with its registrations, one patient and the object that it creates.
#pragma once

#include <functional>

#include "fakes/component_fixture.h"
#include "host/b_vilnor.h"

namespace host {

inline constexpr std::uint32_t kLocalMachine = 0x80000002;
inline constexpr const char16_t* kLinkKey =
    u"SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\App Paths\\Link.exe";
inline constexpr const char16_t* kHostKey = u"SOFTWARE\\Kestra\\Kestra.Main.exe";
inline constexpr const char16_t* kPatient =
    u"SELECT  fDato, PersNr,ForNavn,Navn from Pasient where ID = ";
inline constexpr const char16_t* kPatientSsn = u"SELECT  fDato, PersNr from Pasient where ID = ";

class CountingEvents : public exchange::Events {
 public:
  void UpdateJournal() override {
    ++count;
    if (atEach) {
      atEach();
    }
  }
  int count = 0;
  std::function<void()> atEach;
};

// Folders that exist and files that need no disk.
class NoFiles : public platform::Files {
 public:
  bool FolderExists(const std::u16string& /*path*/) override { return true; }
  void CreateFolder(const std::u16string& /*path*/) override {}
  std::int64_t FileLength(const std::u16string& /*path*/) override { return 0; }
  platform::FileStamp StampOf(const std::u16string& /*path*/) noexcept override { return {}; }
  void DeleteFile(const std::u16string& /*path*/) override {}
  void RenameFile(const std::u16string& /*path*/, const std::u16string& /*newPath*/) override {}
  void ReplaceContents(const std::u16string& path, std::string_view /*bytes*/) override {
    lastWritten = path;
  }
  std::u16string lastWritten;
};

// Adds an installed host and link program to any fixture of the component.
template <class Fixture>
class HostOn : public Fixture {
 protected:
  HostOn() {
    this->registry.SetText(kLocalMachine, kHostKey, u"Path", this->hostPath);
    this->registry.SetText(kLocalMachine, kLinkKey, u"Path", u"C:\\Link");
  }
  // The command lines after a request was written and the program started with it.
  std::vector<std::u16string> Started(const std::u16string& request) const {
    return {u"C:\\Link\\Link.exe path=\"" + this->ExchangePath(request) +
            u"\" version=2 caller=KestraDental removefiles=1"};
  }
  CountingEvents events;
  BVilnor vilnor{events};
};

class BVilnorTest : public HostOn<fakes::ComponentFixture> {
 protected:
  BVilnorTest() {
    database.Answer(
        std::u16string(kPatient) + u"4711",
        {{u"fDato", u"PersNr", u"ForNavn", u"Navn"},
         {{automation::MakeDate({1985, 3, 12, 0, 0, 0}), u"1234", u"Åsa-Märta", u"Öberg"}}});
    database.Answer(
        std::u16string(kPatientSsn) + u"4711",
        {{u"fDato", u"PersNr"}, {{automation::MakeDate({1985, 3, 12, 0, 0, 0}), u"1234"}}});
  }
};

}  // namespace host
