#include "platform/path.h"

#include <gtest/gtest.h>

#include <array>

namespace korvex::platform {
namespace {

TEST(Path, JoinsAndCuts) {
  EXPECT_EQ(join_path("work", "a"), "work/a");
  EXPECT_EQ(join_path("work/", "a"), "work/a");
  EXPECT_EQ(join_path("/", "a"), "/a");
  EXPECT_EQ(join_path("", "a"), "a");
  // The path, its folder, base name and stem.
  const std::array<const char*, 4> rows[] = {
      {"/a/b.c/data.csv", "/a/b.c", "data.csv", "data"},
      {"/a/b.c/data", "/a/b.c", "data", "data"},
      {"archive.tar.gz", ".", "archive.tar.gz", "archive.tar"},
      {"/data.csv", "/", "data.csv", "data"},
      {"a/", "a", "", ""},
      {"back\\slash.x", ".", "back\\slash.x", "back\\slash"},
      {"", ".", "", ""},
  };
  for (const auto& [path, folder, base, name] : rows) {
    EXPECT_EQ(folder_of(path), folder) << path;
    EXPECT_EQ(base_name(path), base) << path;
    EXPECT_EQ(stem(path), name) << path;
  }
}

}  // namespace
}  // namespace korvex::platform
