#include "platform/file.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <functional>
#include <string>
#include <thread>
#include <utility>

#include "support/bytes.h"
#include "support/faulty_file_calls.h"
#include "support/temp_folder.h"
#include "support/write_calls.h"

namespace korvex::platform {
namespace {

using test::FaultyFileCalls;
using test::read_file;
using test::TempFolder;
using test::write_file;

TEST(File, TellsCausesApart) {
  const std::pair<int, FileCause> rows[] = {
      {ENOENT, FileCause::not_found},     {ENOTDIR, FileCause::bad_path},
      {EACCES, FileCause::access_denied}, {EPERM, FileCause::access_denied},
      {EROFS, FileCause::access_denied},  {EEXIST, FileCause::already_exists},
      {ENOSPC, FileCause::disk_full},     {EDQUOT, FileCause::disk_full},
      {EIO, FileCause::generic},          {EFBIG, FileCause::generic},
  };
  for (const auto& [number, cause] : rows) EXPECT_EQ(cause_from_errno(number), cause) << number;
}

TEST(File, OpenReportsWhatStandsInTheWay) {
  const TempFolder folder;
  write_file(folder.file("plain"), "x");
  std::filesystem::create_symlink("loop", folder.file("loop"));
  File file;
  EXPECT_EQ(file.open_for_reading(folder.file("none"), Sharing::shared), FileCause::not_found);
  EXPECT_EQ(file.open_for_reading(folder.file("plain/below"), Sharing::shared),
            FileCause::bad_path);
  EXPECT_EQ(file.open_for_reading(folder.file("loop"), Sharing::shared), FileCause::generic);
  EXPECT_EQ(file.open_for_reading(folder.path(), Sharing::shared), FileCause::access_denied);
  EXPECT_EQ(file.create(folder.path()), FileCause::access_denied);
  EXPECT_EQ(file.create_new(folder.file("plain")), FileCause::already_exists);
  EXPECT_EQ(file.create_new(folder.file("loop")), FileCause::already_exists);
  EXPECT_EQ(file.open_for_writing(folder.file("none")), FileCause::not_found);
  EXPECT_FALSE(file.is_open());
  EXPECT_EQ(read_file(folder.file("plain")), "x");
}

TEST(File, WritesAcrossTheBufferInFewCalls) {
  const TempFolder folder;
  std::string expected;
  File file;
  const FaultyFileCalls counted;
  ASSERT_EQ(file.create(folder.file("out")), FileCause::none);
  std::vector<std::size_t> sizes = {1, File::write_buffer_size - 1, 2,
                                    2 * File::write_buffer_size + 7, 0};
  sizes.insert(sizes.end(), 100'000, 5);
  for (const std::size_t size : sizes) {
    const std::string part(size, static_cast<char>('a' + expected.size() % 26));
    ASSERT_EQ(file.write(part.data(), part.size()), FileCause::none);
    expected += part;
  }
  ASSERT_EQ(file.close(), FileCause::none);
  EXPECT_TRUE(test::same_bytes(expected, read_file(folder.file("out"))));
  EXPECT_LE(static_cast<std::size_t>(std::ranges::count(counted.calls(), "write")),
            expected.size() / File::write_buffer_size + 1);
}

TEST(File, AcceptsNothingAfterAFailedWrite) {
  const TempFolder folder;
  File file;
  ASSERT_EQ(file.create(folder.file("out")), FileCause::none);
  EXPECT_EQ(file.write("kept", 4), FileCause::none);
  EXPECT_EQ(file.flush(), FileCause::none);
  {
    const test::WriteCalls full_disk(ENOSPC);
    EXPECT_EQ(file.write("lost", 4), FileCause::none);
    EXPECT_EQ(file.flush(), FileCause::disk_full);
  }
  EXPECT_EQ(file.write("late", 4), FileCause::disk_full);
  EXPECT_EQ(file.sync(), FileCause::disk_full);
  EXPECT_EQ(file.close(), FileCause::disk_full);
  EXPECT_FALSE(file.is_open());
  EXPECT_EQ(read_file(folder.file("out")), "kept");
  {
    File dropped;
    ASSERT_EQ(dropped.create(folder.file("out")), FileCause::none);
    EXPECT_EQ(dropped.write("dropped", 7), FileCause::none);
  }
  EXPECT_EQ(read_file(folder.file("out")), "") << "what is not closed is not flushed";
}

TEST(File, AHeldFileShutsOthersOutUntilItIsClosed) {
  const TempFolder folder;
  const std::string path = folder.file("held");
  write_file(path, "x");
  File first;
  File second;
  ASSERT_EQ(first.open_for_reading(path, Sharing::shared), FileCause::none);
  EXPECT_EQ(second.open_for_reading(path, Sharing::shared), FileCause::none);
  second.discard();
  EXPECT_EQ(second.open_for_reading(path, Sharing::exclusive), FileCause::sharing_violation);

  ASSERT_EQ(first.open_for_reading(path, Sharing::exclusive), FileCause::none);
  EXPECT_EQ(second.open_for_reading(path, Sharing::shared), FileCause::sharing_violation);
  File moved = std::move(first);
  EXPECT_EQ(second.open_for_reading(path, Sharing::exclusive), FileCause::sharing_violation);
  moved.discard();
  EXPECT_EQ(second.open_for_reading(path, Sharing::exclusive), FileCause::none);
}

// Somebody replaces or removes the file between its opening and its hold: a save would be lost, or
// a run written to a file without a name.
TEST(File, WhatIsHeldStandsUnderItsName) {
  const TempFolder folder;
  const std::string path = folder.file("file");
  write_file(path, "old");
  write_file(folder.file("fresh"), "new");
  const std::function<void()> events[] = {
      [&] { std::filesystem::rename(folder.file("fresh"), path); },
      [&] { std::filesystem::remove(path); }};
  for (const auto& happen : events) {
    FaultyFileCalls calls;
    calls.before_each([&](int) {
      const bool is_hold = calls.calls().back() == "flock";
      if (is_hold && std::ranges::count(calls.calls(), "flock") == 1) happen();
    });
    File file;
    if (&happen == &events[0]) {
      ASSERT_EQ(file.open_for_reading(path, Sharing::exclusive), FileCause::none);
      char bytes[3] = {};
      std::size_t count = 0;
      EXPECT_EQ(file.read(bytes, sizeof bytes, count), FileCause::none);
      EXPECT_EQ(std::string(bytes, count), "new");
      continue;
    }
    ASSERT_EQ(file.create(path), FileCause::none);
    EXPECT_EQ(file.write("x", 1), FileCause::none);
    EXPECT_EQ(file.close(), FileCause::none);
    EXPECT_EQ(read_file(path), "x");
  }
}

TEST(File, APipeWithoutWriterDoesNotBlock) {
  const TempFolder folder;
  ASSERT_EQ(::mkfifo(folder.file("pipe").c_str(), 0600), 0);
  File file;
  ASSERT_EQ(file.open_for_reading(folder.file("pipe"), Sharing::exclusive), FileCause::none);
  EXPECT_FALSE(file.is_regular());
  std::uint64_t size = 1;
  EXPECT_EQ(file.size(size), FileCause::none);
  EXPECT_EQ(size, 0u);
}

// What a host has to do with the two signals that a write raises, and whether they reach it.
int reached = 0;
void count_signal(int) { ++reached; }

bool is_waiting(int signal) {
  sigset_t set;
  ::sigpending(&set);
  return ::sigismember(&set, signal) == 1;
}

TEST(File, AFailedWriteRaisesNoSignal) {
  const TempFolder folder;
  const auto write_to_left_pipe = [&] {
    ::unlink(folder.file("pipe").c_str());
    ASSERT_EQ(::mkfifo(folder.file("pipe").c_str(), 0600), 0);
    const int reader = ::open(folder.file("pipe").c_str(), O_RDONLY | O_NONBLOCK);
    File file;
    ASSERT_EQ(file.create(folder.file("pipe")), FileCause::none);
    ::close(reader);
    EXPECT_EQ(file.write("x", 1), FileCause::none);
    EXPECT_EQ(file.close(), FileCause::generic);
  };
  // More than a pipe holds, so that the reader leaves while the write goes on.
  const auto write_to_leaving_reader = [&] {
    ::unlink(folder.file("pipe").c_str());
    ASSERT_EQ(::mkfifo(folder.file("pipe").c_str(), 0600), 0);
    std::thread reader([&] {
      const int pipe = ::open(folder.file("pipe").c_str(), O_RDONLY);
      char some[4096];
      EXPECT_GT(::read(pipe, some, sizeof some), 0);
      ::close(pipe);
    });
    File file;
    EXPECT_EQ(file.create(folder.file("pipe")), FileCause::none);
    const std::string data(1024 * 1024, 'x');
    EXPECT_EQ(file.write(data.data(), data.size()), FileCause::generic);
    reader.join();
  };
  const auto write_past_the_limit = [&] {
    rlimit old = {};
    ::getrlimit(RLIMIT_FSIZE, &old);
    const rlimit low = {.rlim_cur = 100, .rlim_max = old.rlim_max};
    File file;
    ASSERT_EQ(file.create(folder.file("data")), FileCause::none);
    EXPECT_EQ(file.write(std::string(200, 'x').data(), 200), FileCause::none);
    ::setrlimit(RLIMIT_FSIZE, &low);
    EXPECT_EQ(file.flush(), FileCause::generic);
    ::setrlimit(RLIMIT_FSIZE, &old);
    EXPECT_EQ(read_file(folder.file("data")).size(), 100u);
  };
  const std::pair<int, std::function<void()>> rows[] = {{SIGPIPE, write_to_left_pipe},
                                                        {SIGPIPE, write_to_leaving_reader},
                                                        {SIGXFSZ, write_past_the_limit}};
  for (const auto& [signal, write] : rows) {
    write();  // would end the process
    struct sigaction counting = {};
    counting.sa_handler = count_signal;
    struct sigaction before = {};
    ::sigaction(signal, &counting, &before);
    write();
    EXPECT_EQ(reached, 0);
    ::raise(signal);
    EXPECT_EQ(reached, 1) << "the handler stands, the mask is as it was";
    // One that the host keeps back for itself.
    sigset_t set;
    ::sigemptyset(&set);
    ::sigaddset(&set, signal);
    ::pthread_sigmask(SIG_BLOCK, &set, nullptr);
    write();
    EXPECT_FALSE(is_waiting(signal));
    ::raise(signal);
    write();
    EXPECT_TRUE(is_waiting(signal));
    ::pthread_sigmask(SIG_UNBLOCK, &set, nullptr);
    EXPECT_EQ(std::exchange(reached, 0), 2);
    ::sigaction(signal, &before, nullptr);
  }
}

TEST(File, RemovesOnlyRegularOutputs) {
  const TempFolder folder;
  ASSERT_EQ(::mkfifo(folder.file("pipe").c_str(), 0600), 0);
  write_file(folder.file("data"), "x");
  write_file(folder.file("target"), "x");
  std::filesystem::create_symlink("target", folder.file("link"));
  for (const char* name : {"pipe", "data", "link"}) {
    File file;
    ASSERT_EQ(file.open_for_reading(folder.file(name), Sharing::unlocked), FileCause::none);
    file.remove(folder.file(name));
  }
  EXPECT_EQ(folder.names(), (std::vector<std::string>{"link", "pipe"}));

  // What somebody else has put in the place of the file is not its to remove.
  File file;
  ASSERT_EQ(file.create(folder.file("data")), FileCause::none);
  std::filesystem::rename(folder.file("data"), folder.file("moved"));
  write_file(folder.file("data"), "theirs");
  file.remove(folder.file("data"));
  EXPECT_EQ(read_file(folder.file("data")), "theirs");
}

}  // namespace
}  // namespace korvex::platform
