#include "platform/replacing_file.h"

#include <sys/stat.h>

#include "support/bytes.h"
#include "support/temp_folder.h"

namespace korvex::platform {
namespace {

using test::read_file;
using test::TempFolder;
using test::write_file;

class ReplacingFileTest : public testing::Test {
 protected:
  FileCause begin(ReplacingFile& file) const {
    const FileCause cause = file.create(folder.file("out"));
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
    struct stat status = {};
    ASSERT_EQ(::lstat(folder.file("out").c_str(), &status), 0);
    EXPECT_TRUE(S_ISREG(status.st_mode));
    EXPECT_EQ((status.st_mode & 07777) == 0604, !is_link) << "the old file's mode stays";
    EXPECT_EQ(read_file(folder.file("out")), "new");
    EXPECT_EQ(read_file(folder.file("precious")), "mine");
    std::filesystem::remove(folder.file("out"));
  }
  EXPECT_EQ(folder.names(), std::vector<std::string>{"precious"});
}

TEST_F(ReplacingFileTest, WhatIsGivenUpLeavesNeitherOldNorNew) {
  write_file(folder.file("out"), "old");
  {
    ReplacingFile file;
    ASSERT_EQ(begin(file), FileCause::none);
  }
  EXPECT_TRUE(folder.names().empty());
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
