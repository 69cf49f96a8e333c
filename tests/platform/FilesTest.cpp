// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

#include "platform/CodePages.h"
#include "platform/Files.h"
#include "tests/platform/Scoped.h"

namespace pim {
namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;
using test::ContentOf;
using test::TemporaryFolder;

// Lets no file grow beyond some bytes, as a disk that is full.
class ScopedFileLimit {
 public:
  explicit ScopedFileLimit(rlim_t bytes) : handler_(std::signal(SIGXFSZ, SIG_IGN)) {
    getrlimit(RLIMIT_FSIZE, &before_);
    const rlimit limit{bytes, before_.rlim_max};
    setrlimit(RLIMIT_FSIZE, &limit);
  }
  ScopedFileLimit(const ScopedFileLimit&) = delete;
  ScopedFileLimit& operator=(const ScopedFileLimit&) = delete;
  ~ScopedFileLimit() {
    setrlimit(RLIMIT_FSIZE, &before_);
    std::signal(SIGXFSZ, handler_);
  }

 private:
  void (*handler_)(int);
  rlimit before_{};
};

TEST(Files, NativePath) {
  const auto wide = [](std::string_view text) { return WideFromUtf8(text); };
  const std::string a300(300, 'a'), a255(255, 'a'), kanji100 = [] {
    std::string text;
    for (int i = 0; i < 100; ++i) text += "\u6F22";
    return text;
  }();
  const struct {
    std::u16string path;
    std::string native;
  } rows[] = {
      {u"C:\\a/b\u00FC.vcf", "C:/a/b\u00FC.vcf"},
      {u"a\0b"s, ""},
      {wide(a255), a255},
      {wide(a300), a255},
      {wide("/d/" + a300 + "(12).vcf/" + a300), "/d/" + a255.substr(8) + "(12).vcf/" + a255},
      {wide(a300 + "().vcf"), a255.substr(4) + ".vcf"},
      {wide(a300 + "(7)"), a255.substr(3) + "(7)"},
      {wide(kanji100 + "(2).vcf"), kanji100.substr(0, 246) + "(2).vcf"},
      {wide("x" + kanji100 + ".vcf"), "x" + kanji100.substr(0, 249) + ".vcf"},
      {wide("ab(3)." + a300), "ab(3)." + a300.substr(0, 124)},
      {{u'a', 0xD800, u'/'}, "a\uFFFD/"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.native);
    EXPECT_EQ(NativePath(row.path), row.native);
  }
}

TEST(Files, PathExists) {
  const TemporaryFolder folder;
  EXPECT_TRUE(PathExists(folder.path()));
  EXPECT_FALSE(PathExists(folder / "none"));
  EXPECT_FALSE(PathExists(""));
  fs::create_symlink("nowhere", folder / "link");
  EXPECT_TRUE(PathExists(folder / "link"));
}

TEST(Files, OnlyRegularFilesAreRead) {
  const TemporaryFolder folder;
  ASSERT_TRUE(WriteFile(folder / "file", "0123456789"));
  InputFile file(folder / "file");
  ASSERT_TRUE(file.IsOpen()) << file.Problem();
  EXPECT_EQ(file.Length(), 10);
  std::string bytes(20, '?');
  EXPECT_EQ(file.Read(bytes.data(), 4), 4U);
  EXPECT_EQ(file.Read(bytes.data() + 4, 16), 6U);
  EXPECT_EQ(bytes, "0123456789??????????");
  EXPECT_EQ(file.Read(bytes.data(), 1), 0U);

  ASSERT_EQ(mkfifo((folder / "fifo").c_str(), 0600), 0);
  ASSERT_TRUE(WriteFile(folder / "huge", ""));
  ASSERT_EQ(truncate((folder / "huge").c_str(), off_t{1} << 31), 0);
  for (const auto& path :
       {folder.path(), folder / "fifo", folder / "huge", folder / "none", "/dev/zero"s, ""s}) {
    SCOPED_TRACE(path);
    const InputFile refused(path);
    EXPECT_FALSE(refused.IsOpen());
    EXPECT_NE(refused.Problem(), "");
  }
}

// What WriteFile and ReplaceFile share: content, errno where nothing can be opened, devices.
TEST(Files, BothWriters) {
  for (const auto write : {WriteFile, ReplaceFile}) {
    const TemporaryFolder folder;
    EXPECT_TRUE(write(folder / "file", "a longer text"));
    EXPECT_TRUE(write(folder / "file", "text\0"s));
    EXPECT_EQ(ContentOf(folder / "file"), "text\0"s);
    EXPECT_TRUE(write("/dev/null", "text"));
    ASSERT_EQ(mkfifo((folder / "fifo").c_str(), 0600), 0);
    const std::pair<std::string, int> refused[] = {{folder / "none/file", ENOENT},
                                                   {folder.path(), EISDIR},
                                                   {"", ENOENT},
                                                   {folder / "file/file", ENOTDIR},
                                                   {folder / "fifo", ENXIO}};
    for (const auto& [path, error] : refused) {
      SCOPED_TRACE(path);
      errno = 0;
      EXPECT_FALSE(write(path, "text"));
      EXPECT_EQ(errno, error);
    }
    try {
      write("/dev/full", "text");
      ADD_FAILURE() << "a full device";
    } catch (const FileError& error) {
      EXPECT_EQ(error.path(), "/dev/full");
      EXPECT_NE(error.reason(), "");
    }
    EXPECT_TRUE(PathExists("/dev/full"));
    EXPECT_EQ(folder.Count(), 2U);
  }
}

TEST(Files, FullDisk) {
  const TemporaryFolder folder;
  ASSERT_TRUE(WriteFile(folder / "kept", "before"));
  ASSERT_TRUE(WriteFile(folder / "target", "before"));
  fs::create_symlink("target", folder / "link");
  {
    const ScopedFileLimit limit(1000);
    const std::string bytes(5000, 'x');
    EXPECT_THROW(static_cast<void>(WriteFile(folder / "new", bytes)), FileError);
    EXPECT_THROW(static_cast<void>(WriteFile(folder / "link", bytes)), FileError);
    EXPECT_THROW(static_cast<void>(ReplaceFile(folder / "kept", bytes)), FileError);
  }
  EXPECT_FALSE(PathExists(folder / "new"));
  EXPECT_TRUE(PathExists(folder / "link"));
  EXPECT_EQ(ContentOf(folder / "target"), "");
  EXPECT_EQ(ContentOf(folder / "kept"), "before");
  EXPECT_EQ(folder.Count(), 3U);
}

// A replaced file keeps its permissions, and a link stays one.
TEST(Files, ReplaceKeepsWhatStandsThere) {
  const TemporaryFolder folder;
  ASSERT_TRUE(WriteFile(folder / "file", "before"));
  fs::permissions(folder / "file", fs::perms::owner_read | fs::perms::owner_write);
  EXPECT_TRUE(ReplaceFile(folder / "file", "after"));
  EXPECT_EQ(fs::status(folder / "file").permissions(),
            fs::perms::owner_read | fs::perms::owner_write);
  fs::create_symlink("file", folder / "link");
  EXPECT_TRUE(ReplaceFile(folder / "link", "through the link"));
  EXPECT_TRUE(fs::is_symlink(folder / "link"));
  EXPECT_EQ(ContentOf(folder / "file"), "through the link");
}

}  // namespace
}  // namespace pim
