#include "databases/clinic.h"

#include "automation/text.h"
#include "platform/thread_state.h"
#include "schema/fill.h"
#include "schema/rows.h"

namespace databases {
namespace {

constexpr std::int16_t kHashDates = 1;
constexpr std::int16_t kQuotedDates = 2;

// Everything except the embedded databases.
bool IsAServer(const Product& product) {
  return product.name != "SQLite" && product.name != "Access";
}

std::vector<Product> ProductsThat(bool areServers) {
  std::vector<Product> products = contract::Products();
  std::erase_if(products, [&](const auto& product) { return IsAServer(product) != areServers; });
  return products;
}

}  // namespace

Clinic::Clinic() {
  platform::Use(platform);
  locale.UseSwedish();
  session = {.gConnectionParameter = GetParam().connectionString,
             .gKestraLangID = 1,
             .gDbType = IsServer() ? kQuotedDates : kHashDates,
             .gDateFormat = u"yyyy-MM-dd"};
  own_ = real->NewConnection();
  own_->Open(GetParam().connectionString, u"", u"", platform::kOptionsUnspecified);
  MakeHostDatabase();
}

Clinic::~Clinic() {
  platform::ForgetThreadState();
}

bool Clinic::IsServer() const {
  return IsAServer(GetParam());
}

void Clinic::MakeHostDatabase() {
  schema::FillHostDatabase(*own_, GetParam().name);
}

void Clinic::Run(const std::u16string& statement) {
  own_->Execute(statement, platform::kOptionsUnspecified);
}

std::vector<std::u16string> Clinic::Rows(const std::u16string& columns,
                                         const std::u16string& rest) {
  return schema::Rows(*own_, columns, rest);
}

std::vector<std::u16string> Clinic::Written() {
  auto rows =
      Rows(u"VilnorId,PID,BID,RID,FHP_ID,CaseId,CaseType,Journal_ID,StatusCode,VilnorUser,RegDate",
           u"Vilnor ORDER BY VilnorId");
  for (auto& line :
       Rows(u"ID,PID,Tekst,BID,RID,Dato,KODE,Status,Fakturert,RefTBID", u"Journal ORDER BY ID")) {
    rows.push_back(std::move(line));
  }
  for (auto& user : Rows(u"PID,UserName", u"VilnorPasient ORDER BY PID, UserName")) {
    rows.push_back(std::move(user));
  }
  return rows;
}

std::vector<Product> Servers() {
  return ProductsThat(true);
}

std::vector<Product> EmbeddedProducts() {
  return ProductsThat(false);
}

void Clinic::ExpectProvidersBox(const std::u16string& procedure) {
  ASSERT_EQ(Boxes().size(), 1U);
  const std::u16string text = Boxes()[0];
  EXPECT_TRUE(text.starts_with(u"-2147")) << automation::ToUtf8(text);
  EXPECT_TRUE(text.ends_with(u" in " + procedure)) << automation::ToUtf8(text);
}

}  // namespace databases
