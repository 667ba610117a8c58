// The cost per byte of reading a result file. The result's status leaves the database unchanged.
#include <benchmark/benchmark.h>
#include <filesystem>
#include <fstream>
#include <string>

#include "automation/text.h"
#include "exchange/result_readers.h"
#include "native/practice.h"
#include "parser_limits/parser_limits.h"
#include "platform/platform.h"
#include "platform/result_document.h"

namespace {

namespace fs = std::filesystem;
using benchmarks::Clinic;

constexpr std::int32_t kPatient = 4711;
constexpr std::size_t kLargest = parser_limits::kLargestDocument;
// In a note: enough to keep the largest file below the limit on elements.
constexpr int kSentences = 150;

// The exchange directory of a reader.
class Directory {
 public:
  Directory() { fs::create_directory(path_); }
  Directory(const Directory&) = delete;
  Directory& operator=(const Directory&) = delete;
  ~Directory() { fs::remove_all(path_); }

  std::u16string Path() const { return automation::FromUtf8(path_.string()); }

  // The link program's answer comes after a form of the given length. A large form has long notes.
  void PutResult(std::size_t length) {
    std::string note;
    for (int sentence = 0; sentence < kSentences; ++sentence) {
      note += "V\xE4rk vid tuggning. \xD6verk\xE4nslig. ";
    }
    const std::string item = "<FormItem><FormItemKey>edtAnamnes</FormItemKey><FormItemValue>" +
                             note + "</FormItemValue></FormItem>";
    const std::string start = "<?xml version='1.0' encoding='ISO-8859-1'?>\n<Envelope><Form>";
    const std::string end =
        "</Form><Cancelled>0</Cancelled><Status>4</Status><Id>2071</Id><UserName>anna</UserName>"
        "<UserDefData>4711&amp;12&amp;3</UserDefData></Envelope>\n";
    std::string bytes = start;
    while (bytes.size() + item.size() + end.size() <= length) {
      bytes += item;
    }
    std::ofstream(path_ / "OutNewCase4711.xml", std::ios::binary)
        << bytes << std::string(length - bytes.size() - end.size(), '\xE4') << end;
    // A rejected file would cost next to nothing.
    const auto document = platform::Current().resultDocuments.New();
    document->Load(Path() + u"\\OutNewCase4711.xml");
    isReadable = document->GetParseError().code == 0;
  }

  bool isReadable = false;

 private:
  fs::path path_ = fs::temp_directory_path() / "vilnor-bench-results";
};

void ReadsAResult(benchmark::State& state) {
  Clinic clinic(benchmarks::SmallPractice());
  const Clinic::Inside inside(clinic);
  Directory directory;
  directory.PutResult(static_cast<std::size_t>(state.range(0)));
  if (!directory.isReadable) {
    state.SkipWithError("the result is not read");
  }
  for (auto _ : state) {
    exchange::ReadResult({.kind = exchange::RequestKind::NewCase,
                          .key = kPatient,
                          .folder = directory.Path(),
                          .events = nullptr});
  }
  if (const std::string complaint = clinic.FirstComplaint(); !complaint.empty()) {
    state.SkipWithError(complaint.c_str());
  }
  state.counters["per"] = static_cast<double>(state.range(0));
}
BENCHMARK(ReadsAResult)
    ->Name("result/byte")
    ->RangeMultiplier(2)
    ->Range(1024, kLargest)
    ->MinTime(0.02);

}  // namespace
