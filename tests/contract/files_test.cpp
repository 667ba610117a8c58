// What the component relies on from files and folders.
#include "platform/files.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "contract/adapters.h"
#include "contract/temporary_folder.h"
#include "fakes/printing.h"

namespace contract {
namespace {

using fakes::ErrorNumberOf;

class Files : public testing::Test {
 protected:
  std::size_t FilesInFolder() const {
    return static_cast<std::size_t>(
        std::distance(std::filesystem::directory_iterator(folder_.path()), {}));
  }
  TemporaryFolder folder_;
  std::unique_ptr<platform::Files> files_ = NewFiles();
};

TEST_F(Files, FoldersAreMadeOneLevelAtATime) {
  EXPECT_FALSE(files_->FolderExists(folder_ / "Vilnor"));
  files_->CreateFolder(folder_ / "Vilnor");
  EXPECT_TRUE(files_->FolderExists(folder_ / "Vilnor"));
  EXPECT_EQ(ErrorNumberOf([&] { files_->CreateFolder(folder_ / "Vilnor"); }), 58);
  EXPECT_EQ(ErrorNumberOf([&] { files_->CreateFolder(folder_ / "none/Vilnor"); }), 76);
}

TEST_F(Files, FileIsNotReportedAsAFolder) {
  folder_.Write("file", "x");
  EXPECT_FALSE(files_->FolderExists(folder_ / "file"));
  EXPECT_EQ(ErrorNumberOf([&] { files_->CreateFolder(folder_ / "file"); }), 58);
}

TEST_F(Files, LengthsAreBytesAndZeroForAFolder) {
  folder_.Write("Länk.exe", "12345");
  folder_.Write("empty", "");
  EXPECT_EQ(files_->FileLength(folder_ / "Länk.exe"), 5);
  EXPECT_EQ(files_->FileLength(folder_ / "empty"), 0);
  EXPECT_EQ(files_->FileLength(PathText(folder_.path().string())), 0);
  EXPECT_EQ(ErrorNumberOf([&] { files_->FileLength(folder_ / "none"); }), 53);
  EXPECT_EQ(ErrorNumberOf([&] { files_->FileLength(folder_ / "none/none"); }), 53);
}

TEST_F(Files, DeletedFileIsMissing) {
  folder_.Write("Öppen.xml", "x");
  files_->DeleteFile(folder_ / "Öppen.xml");
  EXPECT_EQ(FilesInFolder(), 0U);
  EXPECT_EQ(ErrorNumberOf([&] { files_->DeleteFile(folder_ / "Öppen.xml"); }), 53);
}

TEST_F(Files, RenamedFileHasItsContentsUnderTheNewNameOnly) {
  folder_.Write("Öppen.xml", "x");
  files_->RenameFile(folder_ / "Öppen.xml", folder_ / "Öppen 2026-11-16.xml");
  EXPECT_EQ(folder_.Read("Öppen 2026-11-16.xml"), "x");
  EXPECT_EQ(FilesInFolder(), 1U);
  EXPECT_EQ(ErrorNumberOf([&] { files_->RenameFile(folder_ / "Öppen.xml", folder_ / "new.xml"); }),
            53);
  EXPECT_EQ(
      ErrorNumberOf([&] { files_->RenameFile(folder_ / "none/a.xml", folder_ / "none/b.xml"); }),
      53);
}

TEST_F(Files, RenamedFileKeepsItsStamp) {
  folder_.Write("a.xml", "a");
  const auto stamp = files_->StampOf(folder_ / "a.xml");
  EXPECT_EQ(stamp.length, 1);
  EXPECT_EQ(files_->StampOf(folder_ / "a.xml"), stamp);
  files_->RenameFile(folder_ / "a.xml", folder_ / "b.xml");
  EXPECT_EQ(files_->StampOf(folder_ / "b.xml"), stamp);
  EXPECT_EQ(files_->StampOf(folder_ / "a.xml").length, -1);
  std::filesystem::last_write_time(
      folder_.path() / "b.xml",
      std::filesystem::last_write_time(folder_.path() / "b.xml") + std::chrono::seconds(5));
  EXPECT_NE(files_->StampOf(folder_ / "b.xml"), stamp);
}

TEST_F(Files, RenamingDoesNotOverwriteAnotherFile) {
  folder_.Write("a.xml", "a");
  folder_.Write("b.xml", "b");
  EXPECT_EQ(ErrorNumberOf([&] { files_->RenameFile(folder_ / "a.xml", folder_ / "b.xml"); }), 58);
  EXPECT_EQ(folder_.Read("a.xml"), "a");
  EXPECT_EQ(folder_.Read("b.xml"), "b");
}

TEST_F(Files, NewContentsReplaceAnOlderFileAndLeaveNoTemporaryFile) {
  const std::string bytes("<a>\xC5\0\r\n</a>", 11);
  files_->ReplaceContents(folder_ / "In Åsa.xml", std::string(100000, 'x'));
  EXPECT_EQ(folder_.Read("In Åsa.xml").size(), 100000U);
  files_->ReplaceContents(folder_ / "In Åsa.xml", bytes);
  EXPECT_EQ(folder_.Read("In Åsa.xml"), bytes);
  files_->ReplaceContents(folder_ / "In Åsa.xml", "");
  EXPECT_EQ(folder_.Read("In Åsa.xml"), "");
  EXPECT_EQ(FilesInFolder(), 1U);
}

TEST_F(Files, WritingIntoAMissingFolderFailsAndLeavesNothing) {
  EXPECT_EQ(ErrorNumberOf([&] { files_->ReplaceContents(folder_ / "none/x.xml", "x"); }), 76);
  EXPECT_EQ(FilesInFolder(), 0U);
}

TEST_F(Files, WritingInPlaceOfAFolderFailsAndLeavesNothing) {
  files_->CreateFolder(folder_ / "x.xml");
  EXPECT_NE(ErrorNumberOf([&] { files_->ReplaceContents(folder_ / "x.xml", "x"); }), 0);
  EXPECT_TRUE(files_->FolderExists(folder_ / "x.xml"));
  EXPECT_EQ(FilesInFolder(), 1U);
}

TEST_F(Files, IrreplaceableFileKeepsItsContentsAndNoTemporaryFileIsLeft) {
  folder_.Write("In.xml", "earlier");
  {
    const auto held = Held(folder_.path() / "In.xml");
    ASSERT_TRUE(held);
    EXPECT_EQ(ErrorNumberOf([&] { files_->ReplaceContents(folder_ / "In.xml", "later"); }), 70);
  }
  EXPECT_EQ(folder_.Read("In.xml"), "earlier");
  EXPECT_EQ(FilesInFolder(), 1U);
  files_->ReplaceContents(folder_ / "In.xml", "later");
  EXPECT_EQ(folder_.Read("In.xml"), "later");
}

TEST_F(Files, TemporaryFileOfAKilledHostIsRemovedByTheNextRequest) {
  for (const char* left : {"InNewCase1.xml.tmp", "InNewFHP8.xml.tmp", "InExistCase77.xml.tmp",
                           "Search19450101-1234.xml.tmp"}) {
    folder_.Write(left, "<Envelope");
  }
  const std::vector<std::string> others = {"OutNewCase1.xml.tmp",    "Notes.xml.tmp",
                                           "InNewCase1.xml",         "InNewCase1.tmp",
                                           "InNewCase1.xml.tmp.old", "Search"};
  for (const auto& other : others) {
    folder_.Write(other, "x");
  }
  files_->ReplaceContents(folder_ / "InNewCase2.xml", "later");
  EXPECT_EQ(folder_.Read("InNewCase2.xml"), "later");
  for (const auto& other : others) {
    EXPECT_EQ(folder_.Read(other), "x") << other;
  }
  EXPECT_EQ(FilesInFolder(), 1 + others.size());
}

TEST_F(Files, InvalidFileNameIsAnError) {
  const std::string longName(5000, 'x');
  EXPECT_NE(ErrorNumberOf([&] { files_->ReplaceContents(folder_ / longName, "x"); }), 0);
  EXPECT_NE(ErrorNumberOf([&] { files_->CreateFolder(folder_ / longName); }), 0);
  EXPECT_NE(ErrorNumberOf([&] { files_->FileLength(folder_ / longName); }), 0);
  EXPECT_EQ(FilesInFolder(), 0U);
}

}  // namespace
}  // namespace contract
