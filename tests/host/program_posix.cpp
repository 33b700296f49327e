#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "host/program.h"

namespace host::test {
namespace {

constexpr int notStarted = 127, endedBySignal = 128;

// Which files a new process has for its standard handles.
class Handles {
public:
  Handles() { posix_spawn_file_actions_init(&actions_); }
  ~Handles() { posix_spawn_file_actions_destroy(&actions_); }
  Handles(const Handles&) = delete;
  Handles& operator=(const Handles&) = delete;

  void open(int handle, const std::string& file, int flags) {
    constexpr mode_t ownersOnly = 0600;
    posix_spawn_file_actions_addopen(&actions_, handle, file.c_str(), flags, ownersOnly);
  }
  const posix_spawn_file_actions_t* get() const { return &actions_; }

private:
  posix_spawn_file_actions_t actions_;
};

}  // namespace

Answer runProgram(const std::vector<std::string>& words, const std::string& input) {
  const TemporaryFolder folder;
  Handles handles;
  handles.open(STDIN_FILENO, folder.write("in", input), O_RDONLY);
  handles.open(STDOUT_FILENO, folder.file("out"), O_WRONLY | O_CREAT | O_TRUNC);
  handles.open(STDERR_FILENO, folder.file("err"), O_WRONLY | O_CREAT | O_TRUNC);
  std::vector<char*> arguments;
  for (const std::string& word : words) arguments.push_back(const_cast<char*>(word.c_str()));
  arguments.push_back(nullptr);

  pid_t process = 0;
  const int failure = posix_spawnp(&process, arguments[0], handles.get(), nullptr, arguments.data(), environ);
  if (failure != 0) return {notStarted, "", words[0] + ": " + std::strerror(failure) + "\n"};
  int status = 0;
  while (waitpid(process, &status, 0) < 0 && errno == EINTR) {
  }
  const int code = WIFEXITED(status) ? WEXITSTATUS(status) : endedBySignal + WTERMSIG(status);
  return {code, contentOf(folder.file("out")), contentOf(folder.file("err"))};
}

}  // namespace host::test
