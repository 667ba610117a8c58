// The sample applications of tests/applications, from the host's real database to the bytes of the
// request file.
#include <algorithm>
#include <gmock/gmock.h>
#include <map>
#include <ostream>
#include <set>
#include <utility>

#include "fhp/application.h"
#include "fhp/send_check.h"
#include "portable/odbc_database.h"
#include "unit/fhp/fixture.h"
#include "unit/fhp/host_database.h"

namespace fhp {

void PrintTo(const HostProduct& product, std::ostream* out) {
  *out << product.name;
}

namespace {

const std::filesystem::path kExpected = VILNOR_SOURCE_DIR "/tests/applications/expected";
// Those whose plan does not fit; docs/application-document.md has the count.
const std::set<std::int32_t> kTooManyMeasures = {1011, 1012, 1013};

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

using Case = std::tuple<HostProduct, Sample>;

class SampleApplications : public fakes::ComponentFixture,
                           public testing::WithParamInterface<Case> {
 protected:
  SampleApplications() {
    std::filesystem::create_directories(folder / "Vilnor");
    locale.UseSwedish();
    platform::Use(real);
    util::CurrentSession().gConnectionParameter = product.connectionString;
    static std::set<std::string> loaded;
    if (loaded.insert(product.name).second) {
      LoadHostDatabase(product);
    }
  }

  std::string ExpectedFile() const {
    return OutputOf("python3 '" VILNOR_SOURCE_DIR "/tests/applications/expected_file.py' --today " +
                    std::string("2026-11-16 --exchange '") + automation::ToUtf8(exchangeDirectory) +
                    "' '" + sample.expected.string() + "'");
  }

  const HostProduct product = std::get<0>(GetParam());
  const Sample sample = std::get<1>(GetParam());
  const std::u16string fileName = u"InNewFHP" + automation::Decimal10(sample.fhpId) + u".xml";
  portable::OdbcDatabase odbc;
  platform::Platform real{clock,        locale,   dialogs, processes, files,
                          userSettings, registry, odbc,    documents, windows};
};

TEST_P(SampleApplications, BecomeExactlyTheExpectedFile) {
  EXPECT_EQ(WriteNewFHP(21000, 41, 31, sample.fhpId, exchangeDirectory), ExchangePath(fileName));
  EXPECT_EQ(dialogs.Texts(), std::vector<std::u16string>());
  EXPECT_EQ(Contents(fileName), ExpectedFile());
}

TEST_P(SampleApplications, FitOrDoNotAsTheirNameSays) {
  std::int16_t errCode = 7;
  std::u16string errMsg;
  const bool tooMany = kTooManyMeasures.contains(sample.fhpId);
  EXPECT_EQ(OKToSend(sample.fhpId, errCode, errMsg), !tooMany);
  EXPECT_EQ(errCode, tooMany ? 100 : 0);
  EXPECT_EQ(errMsg.empty(), !tooMany);
  EXPECT_EQ(dialogs.Texts(), std::vector<std::u16string>());
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

TEST(SampleApplicationFiles, StandForEverySampleInTheDatabase) {
  const HostProduct product = HostProducts().front();
  LoadHostDatabase(product);
  const auto connection = portable::OdbcDatabase().NewConnection();
  connection->Open(product.connectionString, u"", u"", -1);
  const auto rows = connection->Execute(
      u"SELECT SEPrerequestID FROM SEPrerequest WHERE SEPrerequestID > 1000 ORDER BY 1", -1);
  std::vector<std::int32_t> ids;
  for (; !rows->Eof(); rows->MoveNext()) {
    ids.push_back(rows->Field(0).As<std::int32_t>());
  }
  std::vector<std::int32_t> expected;
  for (const Sample& sample : Samples()) {
    expected.push_back(sample.fhpId);
  }
  EXPECT_EQ(ids, expected);
  EXPECT_GE(ids.size(), 12U);
}

}  // namespace
}  // namespace fhp
