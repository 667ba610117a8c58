#include "faults/effects.h"

#include <algorithm>
#include <fstream>
#include <iterator>

#include "automation/text.h"

namespace faults {
namespace {

using automation::ToUtf8;
using platform::Icon;

constexpr std::string_view kNothing = "–";

template <class Texts>
std::string Joined(const Texts& texts) {
  std::string joined;
  for (const auto& text : texts) {
    joined += (joined.empty() ? "" : ", ") + text;
  }
  return joined.empty() ? std::string(kNothing) : joined;
}

using Keyed = std::map<std::u16string, std::u16string>;

Keyed ByKey(const std::vector<std::u16string>& lines) {
  Keyed keyed;
  for (const auto& line : lines) {
    keyed.emplace(line.substr(0, line.find(u'|')), line);
  }
  return keyed;
}

// "+ Vilnor" for an added row, "~" for a changed and "-" for a deleted one.
void AddChanges(const std::string& table, const std::vector<std::u16string>& before,
                const std::vector<std::u16string>& after, std::vector<std::string>& changes) {
  const Keyed older = ByKey(before);
  const Keyed newer = ByKey(after);
  for (const auto& [key, line] : newer) {
    const auto found = older.find(key);
    if (found == older.end() || found->second != line) {
      changes.push_back((found == older.end() ? "+ " : "~ ") + table);
    }
  }
  for (const auto& [key, line] : older) {
    if (!newer.contains(key)) {
      changes.push_back("- " + table);
    }
  }
}

using Contents = std::map<std::string, std::string>;

Contents FilesOf(const World& world) {
  Contents files;
  for (const auto& name : world.ExchangeFiles()) {
    files.emplace(name, world.Contents(name));
  }
  return files;
}

std::vector<std::string> FileChanges(const Contents& before, Contents after) {
  std::vector<std::string> changes;
  for (const auto& [name, bytes] : before) {
    const auto kept = after.find(name);
    const auto renamed = std::find_if(after.begin(), after.end(), [&, &bytes = bytes](auto& file) {
      return file.second == bytes;
    });
    if (kept != after.end()) {
      if (kept->second != bytes) {
        changes.push_back(name + " written");
      }
      after.erase(kept);
    } else if (renamed != after.end()) {
      changes.push_back(name + " set aside");
      after.erase(renamed);
    } else {
      changes.push_back(name + " deleted");
    }
  }
  for (const auto& [name, bytes] : after) {
    changes.push_back(name + " written");
  }
  std::sort(changes.begin(), changes.end());
  return changes;
}

// The request file's name in the program's command line.
std::string RequestIn(const std::u16string& commandLine) {
  const auto end = commandLine.find(u"\" version=");
  const auto begin = commandLine.rfind(u'\\', end) + 1;
  return end == std::u16string::npos ? "alone" : ToUtf8(commandLine.substr(begin, end - begin));
}

std::string NameOf(Icon icon) {
  switch (icon) {
    case Icon::Question:
      return "question";
    case Icon::Exclamation:
      return "exclamation";
    case Icon::Critical:
      return "critical";
    case Icon::None:
      break;
  }
  return "none";
}

// Such a box is known by the first line of its text.
std::string OwnText(const platform::MessageBox& box) {
  return NameOf(box.icon) + " \"" + ToUtf8(box.text.substr(0, box.text.find(u'\r'))) + '"';
}

const std::string& Document() {
  static const std::string document = [] {
    std::ifstream file(VILNOR_SOURCE_DIR "/docs/edge-cases/effects.md", std::ios::binary);
    return std::string{std::istreambuf_iterator<char>(file), {}};
  }();
  return document;
}

}  // namespace

Effects::Effects(const Operation& operation) : name_(operation.name) {
  World world;
  operation.prepare(world);
  const Rows before = world.ReadRows();
  const Contents filesBefore = FilesOf(world);
  operation.run(world);
  const Rows after = world.ReadRows();
  AddChanges("Vilnor", before.links, after.links, rows_);
  AddChanges("Journal", before.journal, after.journal, rows_);
  AddChanges("VilnorPasient", before.users, after.users, rows_);
  files_ = FileChanges(filesBefore, FilesOf(world));
  std::transform(world.processes.started.begin(), world.processes.started.end(),
                 std::back_inserter(starts_), RequestIn);
  events_ = world.events.count;
  AddBoxes(world.dialogs.shown);
}

void Effects::AddBoxes(const std::vector<platform::MessageBox>& shown) {
  for (const auto& box : shown) {
    const auto in = box.text.rfind(u" in ");
    if (in == std::u16string::npos) {
      ownTexts_.insert(OwnText(box));
    } else {
      procedures_[box.icon].insert(ToUtf8(box.text.substr(in + 4)));
    }
  }
}

std::string Effects::Row() const {
  const auto procedures = [&](Icon icon) {
    const auto found = procedures_.find(icon);
    return found == procedures_.end() ? std::string(kNothing) : Joined(found->second);
  };
  std::string row = "|";
  for (const std::string& cell :
       {name_, Joined(rows_), Joined(files_), Joined(starts_), std::to_string(events_),
        procedures(Icon::Exclamation), procedures(Icon::Critical), Joined(ownTexts_)}) {
    row += " " + cell + " |";
  }
  return row;
}

int DocumentedRows() {
  int rows = -1;  // the heading
  for (auto at = Document().find("\n| "); at != std::string::npos;
       at = Document().find("\n| ", at + 1)) {
    ++rows;
  }
  return rows;
}

bool IsDocumented(const std::string& row) {
  return Document().find("\n" + row + "\n") != std::string::npos;
}

}  // namespace faults
