#include <fcntl.h>
#include <netdb.h>
#include <unistd.h>

// Loaded in front of a program: a name service that never answers, and that no signal makes return.
// It leaves a file where the program runs, by which a test sees that it is being asked.
extern "C" __attribute__((visibility("default"))) int getaddrinfo(const char*, const char*,
                                                                  const struct addrinfo*,
                                                                  struct addrinfo**) {
  ::close(::open("asked", O_CREAT | O_WRONLY | O_CLOEXEC, 0600));
  for (;;) ::pause();
}
