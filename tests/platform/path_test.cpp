#include "platform/path.h"

#include <gtest/gtest.h>

namespace korvex::platform {
namespace {

TEST(Path, Joins) {
  EXPECT_EQ(join_path("work", "a"), "work/a");
  EXPECT_EQ(join_path("work/", "a"), "work/a");
  EXPECT_EQ(join_path("/", "a"), "/a");
  EXPECT_EQ(join_path("", "a"), "a");
}

TEST(Path, Cuts) {
  struct Row {
    const char* path;
    const char* folder;
    const char* base;
    const char* stem;
  };
  const Row rows[] = {
      {"/a/b.c/data.csv", "/a/b.c", "data.csv", "data"},
      {"/a/b.c/data", "/a/b.c", "data", "data"},
      {"archive.tar.gz", ".", "archive.tar.gz", "archive.tar"},
      {"/data.csv", "/", "data.csv", "data"},
      {"a/", "a", "", ""},
      {"back\\slash.x", ".", "back\\slash.x", "back\\slash"},
      {"", ".", "", ""},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(folder_of(row.path), row.folder) << row.path;
    EXPECT_EQ(base_name(row.path), row.base) << row.path;
    EXPECT_EQ(stem(row.path), row.stem) << row.path;
  }
}

}  // namespace
}  // namespace korvex::platform
