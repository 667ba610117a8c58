// Holds the readers to tests/results/decisions.tsv, to which the viewer is held, too.
#include <regex>

#include "exchange/result_document_reader.h"
#include "exchange/result_files.h"
#include "unit/exchange/result_fixture.h"

namespace exchange {
namespace {

struct Row {
  std::string kind;
  std::string decision;
  std::string content;
};

// "{text*3}" is the text three times, "\xE5" a byte.
std::string Bytes(const std::string& written) {
  static const std::regex kShort(R"(\{([^{}]*)\*(\d+)\}|\\x([0-9A-F]{2}))");
  std::string bytes;
  auto rest = written.begin();
  for (std::sregex_iterator found(written.begin(), written.end(), kShort), end; found != end;
       ++found) {
    bytes.append(rest, (*found)[0].first);
    rest = (*found)[0].second;
    if ((*found)[3].matched) {
      bytes.push_back(static_cast<char>(std::stoi((*found)[3].str(), nullptr, 16)));
    }
    for (int times = (*found)[2].matched ? std::stoi((*found)[2].str()) : 0; times > 0; --times) {
      bytes += Bytes((*found)[1].str());
    }
  }
  return bytes.append(rest, written.end());
}

std::vector<Row> Rows() {
  std::ifstream file(VILNOR_SOURCE_DIR "/tests/results/decisions.tsv", std::ios::binary);
  std::vector<Row> rows;
  for (std::string line; std::getline(file, line);) {
    const auto first = line.find('\t');
    const auto second = line.find('\t', first + 1);
    if (line.front() != '#') {
      rows.push_back({line.substr(0, first), line.substr(first + 1, second - first - 1),
                      Bytes(line.substr(second + 1))});
    }
  }
  return rows;
}

const Reader& ReaderOf(const std::string& kind) {
  return *std::find_if(kReaders.begin(), kReaders.end(),
                       [&](const Reader& reader) { return "Read" + kind == reader.name; });
}

class Decisions : public ResultReaders {
 protected:
  // What became of a result, in the table's words.
  std::string DecisionOf(const Reader& reader, const std::string& content) {
    database = fakes::Database();
    database.AnswerIdentities({std::int32_t{501}, std::int32_t{502}});
    AnswerJournal(reader.updateQuery);
    if (reader.kind == RequestKind::ExistCase) {
      AnswerLink(reader.existsQuery);
    }
    dialogs = fakes::Dialogs();
    updateJournals = 0;
    Put(reader.file, content);
    const bool readable = ResultDocumentReader(ExchangePath(reader.file)).Error().code == 0;
    Read(reader.kind);
    if (Exists(reader.file)) {
      return Kept(reader, readable);
    }
    if (!dialogs.shown.empty()) {
      return dialogs.shown.front().icon == platform::Icon::Question ? "asks" : "a box";
    }
    return updateJournals == 0 ? "removed" : Entered();
  }

 private:
  std::string Kept(const Reader& reader, bool readable) const {
    EXPECT_EQ(Changes(), Statements());
    if (dialogs.shown.empty()) {
      return readable ? "nothing" : "unreadable";
    }
    const std::string text = ToUtf8(dialogs.shown.front().text);
    EXPECT_TRUE(text.ends_with(std::string(" in XML") + reader.name)) << text;
    return "box " + text.substr(0, text.find(' '));
  }
  // A withdrawn case that is not there changes nothing.
  std::string Entered() const {
    const Statements changes = Changes();
    if (changes.empty() || changes.front().starts_with(u"Delete")) {
      return "withdrawn";
    }
    return changes.front().starts_with(u"Insert") ? "sent" : "changed";
  }
};

TEST_F(Decisions, EveryResultOfTheTableIsDecidedAsItSays) {
  locale.UseSwedish();
  const auto rows = Rows();
  EXPECT_GT(rows.size(), 200U);
  for (const auto& row : rows) {
    EXPECT_EQ(DecisionOf(ReaderOf(row.kind), row.content), row.decision)
        << row.kind << " " << row.content.substr(0, 200);
  }
}

TEST_F(Decisions, ResultsSetAsideHaveTheNamesThatTheViewerKnows) {
  for (const auto& reader : kReaders) {
    Put(reader.file, "x");
    SetAside(ExchangePath(reader.file));
    Put(reader.file, "x");
    SetAside(ExchangePath(reader.file));
  }
  std::ifstream file(VILNOR_SOURCE_DIR "/tests/results/names_set_aside.txt");
  std::vector<std::string> names;
  for (std::string name; std::getline(file, name);) {
    names.push_back(name);
  }
  EXPECT_EQ(Files(), names);
}

}  // namespace
}  // namespace exchange
