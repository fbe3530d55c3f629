#include "platform/replacing_file.h"

#include <sys/stat.h>
#include <unistd.h>

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

uid_t owner_of(const std::string& path) {
  struct stat status = {};
  EXPECT_EQ(::lstat(path.c_str(), &status), 0) << path;
  return status.st_uid;
}

TEST(ReplacingFile, FollowsALinkAndKeepsModeAndOwnerOfTheOldFile) {
  const TempFolder folder;
  // What is there, what it leads to, and the mode of that before and after.
  const std::tuple<const char*, const char*, unsigned, unsigned> cases[] = {
      {"target", "target", 0, 0640},  // nothing: as the mask leaves it
      {"link", "elsewhere/target", 0604, 0604},
      {"loose", "later", 0, 0640},
  };
  std::filesystem::create_directory(folder.file("elsewhere"));
  std::filesystem::create_symlink("elsewhere/target", folder.file("link"));
  std::filesystem::create_symlink("later", folder.file("loose"));
  for (const auto& [name, target, mode, expected] : cases) {
    SCOPED_TRACE(name);
    uid_t owner = ::geteuid();
    if (mode != 0) {
      write_file(folder.file(target), "old");
      ASSERT_EQ(::chmod(folder.file(target).c_str(), mode), 0);
      if (owner == 0) owner = 1000;
      ASSERT_EQ(::chown(folder.file(target).c_str(), owner, static_cast<gid_t>(-1)), 0);
    }
    const mode_t mask = ::umask(027);
    {
      ReplacingFile file;
      ASSERT_EQ(file.create(folder.file(name), {}), FileCause::none);
      ASSERT_EQ(file.write("new", 3), FileCause::none);
      EXPECT_EQ(file.finish(), FileCause::none);
    }
    ::umask(mask);
    EXPECT_EQ(owner_of(folder.file(target)), owner);
    EXPECT_EQ(std::filesystem::is_symlink(folder.file(name)), name != std::string("target"));
    EXPECT_EQ(read_file(folder.file(target)), "new");
    EXPECT_EQ(mode_of(folder.file(target)), expected);
  }
  EXPECT_EQ(folder.names(),
            (std::vector<std::string>{"elsewhere", "later", "link", "loose", "target"}));
}

class ReplacingFileTest : public testing::Test {
 protected:
  FileCause begin(ReplacingFile& file) const {
    const FileCause cause =
        file.create(folder.file("out"), {Replacing::Link::replaced, true, true, false});
    return cause == FileCause::none ? file.write("new", 3) : cause;
  }

  TempFolder folder;
};

TEST_F(ReplacingFileTest, ItsNameIsReplacedAndNeverFollowed) {
  write_file(folder.file("precious"), "mine");
  std::filesystem::create_hard_link(folder.file("precious"), folder.file("hard"));
  for (const std::string old : {"precious", "nowhere", "hard"}) {
    SCOPED_TRACE(old);
    const bool is_link = old != "hard";
    if (!is_link) {
      std::filesystem::rename(folder.file("hard"), folder.file("out"));
      ASSERT_EQ(::chmod(folder.file("precious").c_str(), 0604), 0);
    } else {
      std::filesystem::create_symlink(old, folder.file("out"));
    }
    ReplacingFile file;
    ASSERT_EQ(begin(file), FileCause::none);
    EXPECT_EQ(file.finish(), FileCause::none);
    EXPECT_TRUE(
        std::filesystem::is_regular_file(std::filesystem::symlink_status(folder.file("out"))));
    EXPECT_EQ(mode_of(folder.file("out")) == 0604, !is_link) << "the old file's mode stays";
    EXPECT_EQ(read_file(folder.file("out")), "new");
    EXPECT_EQ(read_file(folder.file("precious")), "mine");
    std::filesystem::remove(folder.file("out"));
  }
  EXPECT_EQ(folder.names(), std::vector<std::string>{"precious"});
}

TEST_F(ReplacingFileTest, WhatIsGivenUpLeavesNeitherOldNorNewUnlessTheOldIsLeft) {
  write_file(folder.file("out"), "old");
  {
    ReplacingFile file;
    ASSERT_EQ(begin(file), FileCause::none);
  }
  EXPECT_TRUE(folder.names().empty());
  write_file(folder.file("out"), "old");
  {
    ReplacingFile file;
    ASSERT_EQ(begin(file), FileCause::none);
    file.leave_old();
  }
  EXPECT_EQ(folder.names(), std::vector<std::string>{"out"});
}

TEST_F(ReplacingFileTest, WhatCannotBeWrittenStays) {
  write_file(folder.file("out"), "old");
  File holder;
  ASSERT_EQ(holder.open_for_reading(folder.file("out"), Sharing::shared), FileCause::none);
  {
    ReplacingFile file;
    EXPECT_EQ(begin(file), FileCause::sharing_violation);
  }
  EXPECT_EQ(read_file(folder.file("out")), "old");
  std::filesystem::remove(folder.file("out"));
  std::filesystem::create_directory(folder.file("out"));
  {
    ReplacingFile file;
    EXPECT_EQ(begin(file), FileCause::access_denied);
  }
  EXPECT_EQ(folder.names(), std::vector<std::string>{"out"});
}

}  // namespace
}  // namespace korvex::platform
