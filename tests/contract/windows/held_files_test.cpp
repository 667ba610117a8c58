// Files that other programs hold open, and how a file is written to disk.
#include <algorithm>
#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

#include "com/wide_text.h"
#include "contract/adapters.h"
#include "contract/temporary_folder.h"
#include "fakes/printing.h"
#include "platform/result_document.h"
#include "windows/file_calls.h"
#include "windows/msxml_documents.h"
#include "windows/win32_files.h"

namespace contract {
namespace {

using automation::Value;
using ::com::Wide;
using fakes::ErrorNumberOf;

// Records the system calls. Waiting takes no time.
class WatchedCalls : public ::windows::FileCalls {
 public:
  HANDLE Open(const std::wstring& path, DWORD access, DWORD sharing, DWORD disposition,
              DWORD flags) override {
    calls.emplace_back((flags & FILE_FLAG_WRITE_THROUGH) != 0 ? "open written through" : "open");
    if (Refused()) {
      return INVALID_HANDLE_VALUE;
    }
    return FileCalls::Open(path, access, sharing, disposition, flags);
  }
  bool Flush(HANDLE file) override {
    calls.emplace_back("flush");
    return !Refused() && FileCalls::Flush(file);
  }
  bool Rename(HANDLE file, const std::wstring& newPath) override {
    calls.emplace_back("rename");
    onRename();
    return !Refused() && FileCalls::Rename(file, newPath);
  }
  bool Move(const std::wstring& path, const std::wstring& newPath, DWORD flags) override {
    calls.emplace_back(flags == MOVEFILE_WRITE_THROUGH ? "move written through" : "move");
    return !Refused() && FileCalls::Move(path, newPath, flags);
  }
  bool Delete(const std::wstring& path) override {
    calls.emplace_back("delete");
    return !Refused() && FileCalls::Delete(path);
  }
  void Wait(DWORD milliseconds) override {
    waited += milliseconds;
    onWait();
  }

  std::vector<std::string> calls;
  DWORD waited = 0;
  std::function<void()> onWait = [] {};
  std::function<void()> onRename = [] {};
  // The error of the next call.
  DWORD refusal = ERROR_SUCCESS;

 private:
  bool Refused() {
    SetLastError(refusal);
    return std::exchange(refusal, DWORD{ERROR_SUCCESS}) != ERROR_SUCCESS;
  }
};

using Calls = std::vector<std::string>;

class HeldFiles : public testing::Test {
 protected:
  std::shared_ptr<void> Open(const std::string& name, DWORD access, DWORD sharing) {
    const HANDLE handle = CreateFileW(Wide(folder_ / name).c_str(), access, sharing, nullptr,
                                      OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    EXPECT_NE(handle, INVALID_HANDLE_VALUE);
    return {handle, CloseHandle};
  }
  // Like a virus scanner: it reads, and prevents deleting and renaming.
  std::shared_ptr<void> Scan(const std::string& name) {
    return Open(name, GENERIC_READ, FILE_SHARE_READ);
  }
  std::vector<std::string> Names() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder_.path())) {
      names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
  }
  void Replace() { files_.ReplaceContents(folder_ / "In.xml", "later"); }
  void Delete() { files_.DeleteFile(folder_ / "In.xml"); }
  void Rename() { files_.RenameFile(folder_ / "In.xml", folder_ / "Aside.xml"); }

  TemporaryFolder folder_;
  WatchedCalls calls_;
  ::windows::Win32Files files_{calls_};
};

struct Operation {
  std::string name;
  void (*run)(::windows::Win32Files& files, const TemporaryFolder& folder);
  std::vector<std::string> left;
  std::string contents;
};

void PrintTo(const Operation& operation, std::ostream* out) {
  *out << operation.name;
}

const Operation kOperations[] = {
    {"Replace",
     [](auto& files, const auto& folder) { files.ReplaceContents(folder / "In.xml", "later"); },
     {"In.xml"},
     "later"},
    {"Delete",
     [](auto& files, const auto& folder) { files.DeleteFile(folder / "In.xml"); },
     {},
     ""},
    {"Rename",
     [](auto& files, const auto& folder) {
       files.RenameFile(folder / "In.xml", folder / "Aside.xml");
     },
     {"Aside.xml"},
     "earlier"},
};

class HeldFile : public HeldFiles, public testing::WithParamInterface<Operation> {};

INSTANTIATE_TEST_SUITE_P(Of, HeldFile, testing::ValuesIn(kOperations),
                         [](const auto& instance) { return instance.param.name; });

TEST_P(HeldFile, HeldFileIsWaitedForUntilItIsReleased) {
  folder_.Write("In.xml", "earlier");
  auto scanner = Scan("In.xml");
  int refusals = 0;
  calls_.onWait = [&] {
    if (++refusals == 3) {
      scanner.reset();
    }
  };
  EXPECT_EQ(ErrorNumberOf([&] { GetParam().run(files_, folder_); }), 0);
  EXPECT_EQ(refusals, 3);
  EXPECT_EQ(Names(), GetParam().left);
  EXPECT_EQ(folder_.Read(GetParam().left.empty() ? "" : GetParam().left.front()),
            GetParam().contents);
}

TEST_P(HeldFile, FileNeverReleasedFailsAfterASecondAndIsUnchanged) {
  folder_.Write("In.xml", "earlier");
  const auto scanner = Scan("In.xml");
  EXPECT_EQ(ErrorNumberOf([&] { GetParam().run(files_, folder_); }), 70);
  EXPECT_GE(calls_.waited, 1'000U);
  EXPECT_LT(calls_.waited, 1'100U);
  EXPECT_EQ(Names(), std::vector<std::string>{"In.xml"});
  EXPECT_EQ(folder_.Read("In.xml"), "earlier");
}

TEST_P(HeldFile, HeldFileIsWaitedForWhicheverErrorTheSystemGives) {
  for (const DWORD refusal : {ERROR_SHARING_VIOLATION, ERROR_LOCK_VIOLATION, ERROR_ACCESS_DENIED}) {
    folder_.Write("In.xml", "earlier");
    folder_.Write("In.xml.tmp", "unfinished");
    calls_.waited = 0;
    calls_.refusal = refusal;
    EXPECT_EQ(ErrorNumberOf([&] { GetParam().run(files_, folder_); }), 0) << refusal;
    EXPECT_GT(calls_.waited, 0U) << refusal;
    std::filesystem::remove(folder_.path() / "Aside.xml");
  }
}

TEST_F(HeldFiles, PermanentRefusalIsNotWaitedFor) {
  files_.CreateFolder(folder_ / "In.xml");
  EXPECT_EQ(ErrorNumberOf([&] { Replace(); }), 70);
  EXPECT_EQ(ErrorNumberOf([&] { Delete(); }), 70);
  EXPECT_EQ(ErrorNumberOf([&] { files_.DeleteFile(folder_ / "none.xml"); }), 53);
  EXPECT_EQ(ErrorNumberOf([&] { files_.ReplaceContents(folder_ / "none/In.xml", ""); }), 76);
  EXPECT_EQ(ErrorNumberOf([&] { files_.RenameFile(folder_ / "none.xml", folder_ / "a.xml"); }), 53);
  // A folder in which no file can be created.
  calls_.refusal = ERROR_ACCESS_DENIED;
  EXPECT_EQ(ErrorNumberOf([&] { files_.ReplaceContents(folder_ / "new.xml", ""); }), 70);
  EXPECT_EQ(calls_.waited, 0U);
  EXPECT_EQ(Names(), std::vector<std::string>{"In.xml"});
}

TEST_F(HeldFiles, ReadOnlyFileIsNotDeleted) {
  folder_.Write("In.xml", "earlier");
  const std::wstring path = Wide(folder_ / "In.xml");
  ASSERT_NE(SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_READONLY), FALSE);
  EXPECT_EQ(ErrorNumberOf([&] { Delete(); }), 70);
  EXPECT_EQ(calls_.waited, 0U);
  EXPECT_EQ(folder_.Read("In.xml"), "earlier");
  SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST_F(HeldFiles, WaitingProcessesNoMessages) {
  PostThreadMessageW(GetCurrentThreadId(), WM_APP, 0, 0);
  ::windows::SystemFileCalls().Wait(1);
  MSG message{};
  EXPECT_NE(PeekMessageW(&message, nullptr, WM_APP, WM_APP, PM_REMOVE), FALSE);
}

TEST_F(HeldFiles, ContentsAreFlushedBeforeTheFileGetsItsName) {
  Replace();
  EXPECT_EQ(calls_.calls, (Calls{"open written through", "flush", "rename"}));
  calls_.calls.clear();
  Rename();
  EXPECT_EQ(calls_.calls, Calls{"move written through"});
}

TEST_F(HeldFiles, FailedWriteKeepsTheOlderFileAndLeavesNoOther) {
  folder_.Write("In.xml", "earlier");
  class FullDisk : public ::windows::FileCalls {
    bool Flush(HANDLE /*file*/) override {
      SetLastError(ERROR_DISK_FULL);
      return false;
    }
  } fullDisk;
  ::windows::Win32Files files(fullDisk);
  EXPECT_EQ(ErrorNumberOf([&] { files.ReplaceContents(folder_ / "In.xml", "later"); }), 61);
  EXPECT_EQ(folder_.Read("In.xml"), "earlier");
  EXPECT_EQ(Names(), std::vector<std::string>{"In.xml"});
}

// Otherwise another host would take the file for one left by a killed host.
TEST_F(HeldFiles, UnfinishedFileCannotBeDeletedByOthers) {
  const std::wstring unfinished = Wide(folder_ / "In.xml.tmp");
  bool deleted = true;
  calls_.onRename = [&] { deleted = DeleteFileW(unfinished.c_str()) != FALSE; };
  Replace();
  EXPECT_FALSE(deleted);
  EXPECT_EQ(folder_.Read("In.xml"), "later");
}

TEST_F(HeldFiles, TemporaryFileOfAnotherRunningHostIsKept) {
  folder_.Write("InNewCase7.xml.tmp", "half");
  folder_.Write("InNewCase8.xml.tmp", "left by a killed host");
  {
    const auto other = Open("InNewCase7.xml.tmp", GENERIC_WRITE, 0);
    Replace();
    EXPECT_EQ(calls_.waited, 0U);
  }
  EXPECT_EQ(Names(), (std::vector<std::string>{"In.xml", "InNewCase7.xml.tmp"}));
  Replace();
  EXPECT_EQ(Names(), std::vector<std::string>{"In.xml"});
}

class ResultBeingWritten : public HeldFiles {
 protected:
  static constexpr DWORD kAllSharing = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

  ResultBeingWritten() { NewResultDocuments(); }
  ::windows::MsxmlDocuments documents_{calls_};
  std::unique_ptr<platform::ResultDocument> document_ = documents_.New();
};

TEST_F(ResultBeingWritten, ResultIsReadWhenItIsComplete) {
  folder_.Write("Out.xml", "<r><a>1</a>");
  auto writer = Open("Out.xml", FILE_APPEND_DATA, kAllSharing);
  calls_.onWait = [&] {
    DWORD written = 0;
    WriteFile(writer.get(), "</r>", 4, &written, nullptr);
    writer.reset();
    calls_.onWait = [] {};
  };
  document_->Load(folder_ / "Out.xml");
  EXPECT_GT(calls_.waited, 0U);
  EXPECT_EQ(document_->GetParseError().code, 0);
  EXPECT_EQ(document_->FirstValue(u"a"), Value(u"1"));
}

TEST_F(ResultBeingWritten, ResultNeverReleasedByItsWriterCannotBeLoaded) {
  folder_.Write("Out.xml", "<r><a>1</a>");
  const auto writer = Open("Out.xml", FILE_APPEND_DATA, kAllSharing);
  document_->Load(folder_ / "Out.xml");
  EXPECT_GE(calls_.waited, 1'000U);
  EXPECT_NE(document_->GetParseError().code, 0);
  EXPECT_EQ(document_->GetParseError().refusal, platform::Reason::Unreadable);
  EXPECT_EQ(ErrorNumberOf([&] { document_->FirstValue(u"a"); }), 91);
}

TEST_F(ResultBeingWritten, MissingResultIsNotWaitedFor) {
  document_->Load(folder_ / "none.xml");
  document_->Load(PathText(folder_.path().string()));
  EXPECT_EQ(calls_.waited, 0U);
  EXPECT_NE(document_->GetParseError().code, 0);
}

TEST_F(ResultBeingWritten, ResultBeingReadMayBeReadByOthers) {
  folder_.Write("Out.xml", "<r><a>1</a></r>");
  const auto scanner = Scan("Out.xml");
  document_->Load(folder_ / "Out.xml");
  EXPECT_EQ(calls_.waited, 0U);
  EXPECT_EQ(document_->FirstValue(u"a"), Value(u"1"));
}

}  // namespace
}  // namespace contract
