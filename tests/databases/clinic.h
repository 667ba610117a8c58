// A clinic's database with the sample data, fresh for each test, on each product.
#pragma once

#include <gmock/gmock.h>
#include <memory>
#include <string>
#include <vector>

#include "contract/adapters.h"
#include "contract/products.h"
#include "contract/registry_adapter.h"
#include "databases/stepping_database.h"
#include "db/connection_state.h"
#include "fakes/fakes.h"
#include "fakes/printing.h"
#include "fakes/with.h"
#include "platform/platform.h"
#include "util/session_settings.h"

namespace databases {

using contract::Product;

class Clinic : public testing::TestWithParam<Product> {
 protected:
  Clinic();
  ~Clinic() override;

  bool IsServer() const;

  // Recreates the tables with only the sample data.
  void MakeHostDatabase();
  // Runs a statement over the test's own connection.
  void Run(const std::u16string& statement);
  // The rows as texts, fields joined by "|", Null as "NULL"; `columns` are separated by commas.
  std::vector<std::u16string> Rows(const std::u16string& columns, const std::u16string& rest);
  // Everything that the component writes.
  std::vector<std::u16string> Written();
  std::u16string Only(const std::u16string& column, const std::u16string& rest) {
    return Rows(column, rest).at(0);
  }

  std::vector<std::u16string> Boxes() const { return dialogs.Texts(); }
  // Expects one box that begins with a provider's error number and ends with the procedure's name.
  void ExpectProvidersBox(const std::u16string& procedure);

  std::unique_ptr<platform::Database> real = contract::NewDatabase();
  SteppingDatabase database{*real};
  fakes::Clock clock;
  fakes::Locale locale;
  fakes::Dialogs dialogs;
  fakes::WindowSystem windows;
  platform::Platform platform =
      fakes::With(contract::RegistryPlatform(), clock, locale, dialogs, database, windows);
  util::SessionSettings& session = util::CurrentSettings();

 private:
  std::unique_ptr<platform::Connection> own_;
};

// The products with a server, and those without.
std::vector<Product> Servers();
std::vector<Product> EmbeddedProducts();

}  // namespace databases

// GoogleTest's macros for fixtures derived from Clinic: one instance for each product, or for each
// product of one kind.
#define INSTANTIATE_FOR(products, Fixture)                           \
  INSTANTIATE_TEST_SUITE_P(On, Fixture, testing::ValuesIn(products), \
                           [](const auto& instance) { return instance.param.name; })
#define INSTANTIATE_FOR_PRODUCTS(Fixture) INSTANTIATE_FOR(contract::Products(), Fixture)
