// The sample applications of tests/applications, from the host's real database to the bytes of the
// request file.
#include <algorithm>
#include <fstream>
#include <gmock/gmock.h>
#include <memory>
#include <ostream>
#include <regex>
#include <set>
#include <utility>

#include "fhp/application.h"
#include "fhp/send_check.h"
#include "native/odbc_database.h"
#include "unit/fhp/fixture.h"
#include "unit/fhp/host_database.h"

namespace fhp {

void PrintTo(const HostProduct& product, std::ostream* out) {
  *out << product.name;
}

namespace {

const std::filesystem::path kExpected = VILNOR_SOURCE_DIR "/tests/applications/expected";
const std::filesystem::path kScript = VILNOR_SOURCE_DIR "/tests/applications/applications.sql";

struct Sample {
  std::int32_t fhpId;
  std::filesystem::path expected;
};

void PrintTo(const Sample& sample, std::ostream* out) {
  *out << sample.expected.stem().string();
}

std::vector<Sample> Samples() {
  std::vector<Sample> samples;
  for (const auto& entry : std::filesystem::directory_iterator(kExpected)) {
    samples.push_back({std::stoi(entry.path().filename().string()), entry.path()});
  }
  std::sort(samples.begin(), samples.end(),
            [](const Sample& left, const Sample& right) { return left.fhpId < right.fhpId; });
  return samples;
}

// The application names in the script's headings.
std::vector<std::string> NamesInScript() {
  std::vector<std::string> names;
  std::ifstream script(kScript);
  const std::regex heading("-- (1[0-9]{3}-[a-z-]+): .*");
  std::smatch found;
  for (std::string line; std::getline(script, line);) {
    if (std::regex_match(line, found, heading)) {
      names.push_back(found[1]);
    }
  }
  return names;
}

std::unique_ptr<platform::Connection> Connected(const HostProduct& product) {
  auto connection = native::OdbcDatabase().NewConnection();
  connection->Open(product.connectionString, u"", u"", -1);
  return connection;
}

// The component on a host database with the samples.
class OnHostDatabase : public fakes::ComponentFixture {
 protected:
  explicit OnHostDatabase(const HostProduct& product) {
    std::filesystem::create_directories(folder / "Vilnor");
    locale.UseSwedish();
    platform::Use(real_);
    util::CurrentSettings().gConnectionParameter = product.connectionString;
    static std::set<std::string> loaded;
    if (loaded.insert(product.name).second) {
      LoadHostDatabase(product);
    }
  }
  // Destroyed before the database.
  ~OnHostDatabase() override { platform::ForgetThreadState(); }

 private:
  native::OdbcDatabase odbc_;
  platform::Platform real_ = fakes::With(ports, odbc_);
};

using Case = std::tuple<HostProduct, Sample>;

class SampleApplications : public OnHostDatabase, public testing::WithParamInterface<Case> {
 protected:
  SampleApplications() : OnHostDatabase(std::get<0>(GetParam())) {}

  std::string ExpectedFile() const {
    return OutputOf("python3 '" VILNOR_SOURCE_DIR "/tests/applications/expected_file.py' --today " +
                    std::string("2026-11-16 --exchange '") + automation::ToUtf8(exchangeDirectory) +
                    "' '" + sample.expected.string() + "'");
  }

  const Sample sample = std::get<1>(GetParam());
  const std::u16string fileName = u"InNewFHP" + automation::Decimal10(sample.fhpId) + u".xml";
};

TEST_P(SampleApplications, SampleApplicationBecomesExactlyTheExpectedFile) {
  EXPECT_EQ(WriteNewFHP(21000, 41, 31, sample.fhpId, exchangeDirectory).Value(),
            ExchangePath(fileName));
  EXPECT_EQ(dialogs.Texts(), std::vector<std::u16string>());
  EXPECT_EQ(Contents(fileName), ExpectedFile());
}

TEST_P(SampleApplications, SampleApplicationPassesTheSendCheckAsItsNameSays) {
  std::int16_t errCode = 7;
  std::u16string errMsg;
  const std::string name = sample.expected.stem().string();
  const bool tooMany = name.ends_with("over-the-limit");
  const bool refused = name.ends_with("refused");
  EXPECT_EQ(OKToSend(sample.fhpId, errCode, errMsg), !tooMany && !refused);
  EXPECT_EQ(errCode, tooMany ? 100 : refused ? 7 : 0);
  EXPECT_EQ(errMsg.empty(), !tooMany);
  EXPECT_EQ(dialogs.Texts(), std::vector<std::u16string>(
                                 refused, u"5 Invalid procedure call or argument in OKToSend"));
}

std::string CaseName(const testing::TestParamInfo<Case>& instance) {
  std::string name =
      std::get<0>(instance.param).name + "_" + std::get<1>(instance.param).expected.stem().string();
  std::replace(name.begin(), name.end(), '-', '_');
  return name;
}

INSTANTIATE_TEST_SUITE_P(Products, SampleApplications,
                         testing::Combine(testing::ValuesIn(HostProducts()),
                                          testing::ValuesIn(Samples())),
                         CaseName);

class ApplicationsOnAProduct : public OnHostDatabase,
                               public testing::WithParamInterface<HostProduct> {
 protected:
  ApplicationsOnAProduct() : OnHostDatabase(GetParam()) {
    Run(u"DELETE FROM company WHERE id = 34");
    Run(u"DELETE FROM Pasient WHERE ID = 20034");
    Run(u"INSERT INTO Pasient (ID, Navn, adr1, postnr, organizationNo) VALUES "
        u"(20034, 'Kliniken', 'Storgatan 1', '99999', '556677-0034')");
    Run(u"INSERT INTO company (id, idarkiv, levno) VALUES (34, 20034, NULL)");
  }

  void Run(const std::u16string& statement) const { Connected(GetParam())->Execute(statement, -1); }
  // An application of that patient, practitioner and company ends in the box and writes no file.
  void ExpectRefused(std::int32_t pid, std::int32_t bid, std::int32_t rid) {
    Run(u"DELETE FROM SEPrerequest WHERE SEPrerequestID = 1");
    Run(u"INSERT INTO SEPrerequest (SEPrerequestID, PID, BID, RID, CaseNo) VALUES (1, " +
        automation::Decimal10(pid) + u", " + automation::Decimal10(bid) + u", " +
        automation::Decimal10(rid) + u", '2026-1')");
    ExpectNoFile(1);
  }
  void ExpectNoFile(std::int32_t fhpId) {
    dialogs.shown.clear();
    EXPECT_TRUE(WriteNewFHP(21000, 41, 31, fhpId, exchangeDirectory).Failed());
    ASSERT_FALSE(dialogs.shown.empty());
    EXPECT_EQ(dialogs.Texts().back(),
              u"91 Object variable or With block variable not set in WriteNewFHP");
    EXPECT_TRUE(std::filesystem::is_empty(folder / "Vilnor"));
  }
};

TEST_P(ApplicationsOnAProduct, ApplicationOfUnknownPeopleOrPlacesEndsInTheBoxAndLeavesNoFile) {
  ExpectRefused(4242, 41, 31);
  ExpectRefused(21001, 4242, 31);
  ExpectRefused(21001, 41, 4242);
  ExpectRefused(21001, 41, 34);
  ExpectNoFile(4242);
}

TEST_P(ApplicationsOnAProduct, ApplicationIsSentAfterOneThatFailed) {
  ExpectRefused(4242, 41, 31);
  dialogs.shown.clear();
  EXPECT_FALSE(WriteNewFHP(21000, 41, 31, 1001, exchangeDirectory).Failed());
  EXPECT_TRUE(dialogs.shown.empty());
}

TEST_P(ApplicationsOnAProduct, SendCheckDoesNotChangeTheApplication) {
  std::int16_t errCode = 7;
  std::u16string errMsg;
  EXPECT_TRUE(OKToSend(1010, errCode, errMsg));
  const auto rows =
      Connected(GetParam())
          ->Execute(u"SELECT PlanTreatmUJaw FROM SEPrerequest WHERE SEPrerequestID = 1010", -1);
  EXPECT_EQ(rows->Field(0), automation::Value(u" 501 502 503 504"));
}

INSTANTIATE_TEST_SUITE_P(Products, ApplicationsOnAProduct, testing::ValuesIn(HostProducts()),
                         [](const auto& instance) { return instance.param.name; });

TEST(SampleApplicationFiles, EverySampleInTheDatabaseHasItsFile) {
  const HostProduct product = HostProducts().front();
  LoadHostDatabase(product);
  const auto connection = Connected(product);
  const auto rows = connection->Execute(
      u"SELECT SEPrerequestID FROM SEPrerequest WHERE SEPrerequestID > 1000 ORDER BY 1", -1);
  std::vector<std::int32_t> ids;
  for (; !rows->Eof(); rows->MoveNext()) {
    ids.push_back(rows->Field(0).As<std::int32_t>());
  }
  std::vector<std::int32_t> expected;
  std::vector<std::string> names;
  for (const Sample& sample : Samples()) {
    expected.push_back(sample.fhpId);
    names.push_back(sample.expected.stem().string());
  }
  EXPECT_EQ(ids, expected);
  EXPECT_EQ(NamesInScript(), names);
}

}  // namespace
}  // namespace fhp
