#include "options.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>

#include "automation/text.h"

namespace sample_host {
namespace {

constexpr std::u16string_view kThen = u"--then";

std::int64_t NumberOf(const std::u16string& word, std::int64_t smallest, std::int64_t largest) {
  const std::string text = automation::ToUtf8(word);
  std::int64_t number = 0;
  const auto* const end = text.data() + text.size();
  const auto read = std::from_chars(text.data(), end, number);
  if (read.ec != std::errc() || read.ptr != end || number < smallest || number > largest) {
    throw UsageError{u"\"" + word + u"\" is no number of the range that belongs here."};
  }
  return number;
}

std::int16_t ShortOf(const std::u16string& word) {
  using Limits = std::numeric_limits<std::int16_t>;
  return static_cast<std::int16_t>(NumberOf(word, Limits::min(), Limits::max()));
}

void SetAnswers(BoxOrders& boxes, const std::u16string& word) {
  if (word != u"ok" && word != u"yes" && word != u"no") {
    throw UsageError{u"--answer-boxes takes ok, yes or no."};
  }
  boxes.answer = true;
  boxes.yes = word == u"yes";
}

struct Option {
  std::u16string_view name;
  // Nothing for an option without a value.
  void (*set)(Options& options, const std::u16string& value);
};

constexpr std::int64_t kLongestWait = 3600;

constexpr auto kOptions = std::to_array<Option>({
    {u"--connection", [](Options& o, const std::u16string& value) { o.connection = value; }},
    {u"--language", [](Options& o, const std::u16string& value) { o.language = ShortOf(value); }},
    {u"--dbtype", [](Options& o, const std::u16string& value) { o.dbType = ShortOf(value); }},
    {u"--wait-result",
     [](Options& o, const std::u16string& value) {
       o.wait = std::chrono::seconds(NumberOf(value, 0, kLongestWait));
     }},
    {u"--answer-boxes",
     [](Options& o, const std::u16string& value) { SetAnswers(o.boxes, value); }},
    {u"--release-boxes",
     [](Options& o, const std::u16string& value) { o.boxes.releaseFile = value; }},
});

// Takes words one by one.
class Words {
 public:
  explicit Words(const std::vector<std::u16string>& words) : words_(words) {}

  bool AtEnd() const { return next_ == words_.size(); }
  const std::u16string& Peek() const { return words_[next_]; }
  const std::u16string& Take(std::u16string_view after) {
    if (AtEnd()) {
      throw UsageError{u"Something is missing after " + std::u16string(after) + u"."};
    }
    return words_[next_++];
  }

 private:
  const std::vector<std::u16string>& words_;
  std::size_t next_ = 0;
};

std::vector<std::u16string> NamesOf(const char* arguments) {
  return automation::Split(automation::FromUtf8(arguments), u' ');
}

void TakeArguments(Words& words, const char* names, Call& call) {
  for (const auto& name : NamesOf(names)) {
    const auto& word = words.Take(call.text + u" (" + name + u")");
    if (name.ends_with(u'$')) {
      call.arguments.AddText(word);
    } else {
      using Limits = std::numeric_limits<std::int32_t>;
      call.arguments.AddNumber(static_cast<long>(NumberOf(word, Limits::min(), Limits::max())));
    }
    call.text += u" " + word;
  }
}

// Makes `call` the table's operation of that word, if there is one.
template <class Table>
bool TakeOperation(const Table& table, Words& words, Call& call) {
  const auto found = std::find_if(table.begin(), table.end(), [&](const auto& operation) {
    return automation::EqualsNoCase(automation::FromUtf8(operation.word), call.text);
  });
  if (found == table.end()) {
    return false;
  }
  call.operation = &*found;
  TakeArguments(words, found->arguments, call);
  return true;
}

Call TakeCall(Words& words) {
  Call call;
  call.text = words.Take(u"the options");
  if (!TakeOperation(SessionOperations(), words, call) &&
      !TakeOperation(DatabaseOperations(), words, call)) {
    throw UsageError{u"There is no operation \"" + call.text + u"\"."};
  }
  return call;
}

void TakeOptions(Words& words, Options& options) {
  while (!words.AtEnd() && words.Peek().starts_with(u"--")) {
    const auto& name = words.Take(u"");
    if (name == u"--keep-boxes") {
      options.boxes.keep = true;
      continue;
    }
    const auto* const option = std::find_if(kOptions.begin(), kOptions.end(),
                                            [&](const auto& each) { return each.name == name; });
    if (option == kOptions.end()) {
      throw UsageError{u"There is no option " + name + u"."};
    }
    option->set(options, words.Take(name));
  }
}

template <class Table>
std::u16string UsageOf(const Table& table) {
  std::u16string lines;
  for (const auto& operation : table) {
    lines += u"  " + automation::FromUtf8(operation.word);
    for (const auto& name : NamesOf(operation.arguments)) {
      lines += u" " + name.substr(0, name.find(u'$'));
    }
    lines += u"\r\n";
  }
  return lines;
}

}  // namespace

Options ParseOptions(const std::vector<std::u16string>& allWords) {
  Words words(allWords);
  Options options;
  options.help = allWords.size() == 1 && (allWords[0] == u"--help" || allWords[0] == u"/?");
  if (options.help) {
    return options;
  }
  TakeOptions(words, options);
  options.calls.push_back(TakeCall(words));
  while (!words.AtEnd()) {
    if (words.Take(u"") != kThen) {
      throw UsageError{options.calls.back().text + u" takes no further argument."};
    }
    options.calls.push_back(TakeCall(words));
  }
  return options;
}

std::u16string Usage() {
  return u"KestraHost [OPTION...] OPERATION ARGUMENT... [--then OPERATION ARGUMENT...]...\r\n"
         u"\r\n"
         u"Calls the component Vilnor as a host does. Options:\r\n"
         u"  --help                 this text\r\n"
         u"  --connection TEXT      connection string of the host's database\r\n"
         u"  --language NUMBER      the host's language id (1)\r\n"
         u"  --dbtype NUMBER        1 or 2, how dates stand in statements (1)\r\n"
         u"  --wait-result SECONDS  after a request, run the message loop until the answer of\r\n"
         u"                         Vilnor Link has been handled\r\n"
         u"  --answer-boxes ANSWER  print the component's message boxes and answer them: ok, no "
         u"or\r\n"
         u"                         yes (boxes that only have OK get OK; ok answers No)\r\n"
         u"  --keep-boxes           print the boxes and leave them open\r\n"
         u"  --release-boxes FILE   with --keep-boxes: answer them once FILE exists\r\n"
         u"\r\n"
         u"Exit code: 0 done, 1 wrong command line, 2 the component cannot be created,\r\n"
         u"3 a call failed, 4 an answer did not come in time.\r\n"
         u"\r\n"
         u"Operations:\r\n" +
         UsageOf(SessionOperations()) + UsageOf(DatabaseOperations());
}

}  // namespace sample_host
