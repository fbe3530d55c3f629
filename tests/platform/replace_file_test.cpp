#include <sys/stat.h>

#include "platform/file.h"
#include "support/bytes.h"
#include "support/temp_folder.h"

namespace korvex::platform {
namespace {

using test::read_file;
using test::TempFolder;
using test::write_file;

unsigned mode_of(const std::string& path) {
  struct stat status = {};
  EXPECT_EQ(::lstat(path.c_str(), &status), 0) << path;
  return status.st_mode & 07777;
}

void write_fresh(const std::string& path) {
  File file;
  ASSERT_EQ(file.create_new(path), FileCause::none);
  ASSERT_EQ(file.write("new", 3), FileCause::none);
  ASSERT_EQ(file.close(), FileCause::none);
}

TEST(ReplaceFile, GivesAFirstFileTheModeThatTheMaskLeaves) {
  const TempFolder folder;
  const mode_t mask = ::umask(027);
  write_fresh(folder.file("fresh"));
  EXPECT_EQ(replace_file(folder.file("fresh"), folder.file("target")), FileCause::none);
  ::umask(mask);
  EXPECT_EQ(mode_of(folder.file("target")), 0640u);
  EXPECT_EQ(folder.names(), std::vector<std::string>{"target"});
}

TEST(ReplaceFile, KeepsModeAndLinkOfTheOldFile) {
  const TempFolder folder;
  std::filesystem::create_directory(folder.file("elsewhere"));
  write_file(folder.file("elsewhere/target"), "old");
  ASSERT_EQ(::chmod(folder.file("elsewhere/target").c_str(), 0604), 0);
  std::filesystem::create_symlink("elsewhere/target", folder.file("link"));
  write_fresh(folder.file("fresh"));
  EXPECT_EQ(replace_file(folder.file("fresh"), folder.file("link")), FileCause::none);
  EXPECT_TRUE(std::filesystem::is_symlink(folder.file("link")));
  EXPECT_EQ(read_file(folder.file("elsewhere/target")), "new");
  EXPECT_EQ(mode_of(folder.file("elsewhere/target")), 0604u);
  EXPECT_EQ(folder.names(), (std::vector<std::string>{"elsewhere", "link"}));
}

TEST(ReplaceFile, ALinkToNothingYetStaysALink) {
  const TempFolder folder;
  std::filesystem::create_symlink("later", folder.file("link"));
  write_fresh(folder.file("fresh"));
  EXPECT_EQ(replace_file(folder.file("fresh"), folder.file("link")), FileCause::none);
  EXPECT_TRUE(std::filesystem::is_symlink(folder.file("link")));
  EXPECT_EQ(read_file(folder.file("later")), "new");
  EXPECT_EQ(mode_of(folder.file("later")) & 02, 0u);
}

}  // namespace
}  // namespace korvex::platform
