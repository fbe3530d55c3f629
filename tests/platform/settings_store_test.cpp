#include "platform/settings_store.h"

#include "platform/file.h"
#include "support/bytes.h"
#include "support/environment.h"
#include "support/faulty_file_calls.h"
#include "support/temp_folder.h"

namespace korvex::platform {
namespace {

using test::read_file;
using test::ScopedVariable;
using test::TempFolder;
using test::write_file;

class SettingsStoreTest : public testing::Test {
 protected:
  std::string value_of(std::string_view name) const {
    std::string value = "untouched";
    return store.read(name, value) == StoreStatus::ok ? value : "(no value)";
  }

  TempFolder folder;
  ScopedVariable home{"XDG_CONFIG_HOME", folder.file("deep/config")};
  SettingsStore store{"Host"};
  std::string path = folder.file("deep/config/Host/Korvex.conf");
};

TEST_F(SettingsStoreTest, TellsAMissingKeyFromAMissingValue) {
  std::string value;
  EXPECT_EQ(store.read("Name", value), StoreStatus::key_missing);
  EXPECT_EQ(store.write("Name", "1"), StoreStatus::ok);
  EXPECT_EQ(store.read("Other", value), StoreStatus::value_missing);
  EXPECT_EQ(store.read("Nam", value), StoreStatus::value_missing);
  EXPECT_EQ(read_file(path), "Name=1\n");
}

TEST_F(SettingsStoreTest, ChangesItsOwnLineOnly) {
  ASSERT_EQ(store.write("Name", "1"), StoreStatus::ok);
  write_file(path, "# a note\nNameLonger=x\nName=1\n\nLast=without line end");
  EXPECT_EQ(store.write("Name", "two=2"), StoreStatus::ok);
  EXPECT_EQ(store.write("Added", ""), StoreStatus::ok);
  EXPECT_EQ(read_file(path),
            "# a note\nNameLonger=x\nName=two=2\n\nLast=without line end\nAdded=\n");
  EXPECT_EQ(value_of("Name"), "two=2");
  EXPECT_EQ(value_of("Added"), "");
  EXPECT_EQ(value_of("Last"), "without line end");
}

TEST_F(SettingsStoreTest, AWriteNeverCostsTheOtherValues) {
  ASSERT_EQ(store.write("Other", "kept"), StoreStatus::ok);
  for (int call = 1; call <= 4; ++call) {
    {
      const test::FaultyFileCalls failing({call, EIO, test::FaultSpan::once, "fstat"});
      store.write("Name", "1");
    }
    EXPECT_EQ(value_of("Other"), "kept") << call;
  }
  write_file(path + ".new", "left over by a process that was killed");
  EXPECT_EQ(store.write("Name", "2"), StoreStatus::ok);
  EXPECT_EQ(value_of("Name") + value_of("Other"), "2kept");
  const std::string too_large(1024 * 1024 + 1, '\n');
  write_file(path, too_large);
  EXPECT_EQ(store.write("Name", "3"), StoreStatus::failure);
  EXPECT_EQ(read_file(path).size(), too_large.size());
}

TEST(SettingsStore, StandsBelowTheHomeFolderWithoutConfigurationFolder) {
  const TempFolder folder;
  const ScopedVariable home("HOME", folder.path());
  for (const auto& configured : {std::optional<std::string>(), std::optional<std::string>("rel")}) {
    const ScopedVariable unset("XDG_CONFIG_HOME", configured);
    EXPECT_EQ(SettingsStore("Host").write("Name", "1"), StoreStatus::ok);
    EXPECT_TRUE(exists(folder.file(".config/Host/Korvex.conf")));
    std::filesystem::remove_all(folder.file(".config"));
  }
}

TEST(SettingsStore, TheHostKeyIsChosenOrTheProgramsName) {
  {
    const ScopedVariable chosen("KORVEX_HOST_KEY", "Editor");
    EXPECT_EQ(host_key(), "Editor");
  }
  for (const auto& key : std::initializer_list<std::optional<std::string>>{
           std::nullopt, "", ".", "..", "../x", "a/b", "/etc"}) {
    const ScopedVariable chosen("KORVEX_HOST_KEY", key);
    EXPECT_EQ(host_key(), "test_platform");
  }
  // Whoever starts a program may give it any name.
  EXPECT_EQ(SettingsStore("..").path(), "");
}

}  // namespace
}  // namespace korvex::platform
