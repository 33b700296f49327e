#include <fcntl.h>
#include <pwd.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <sstream>
#include <stdexcept>
#include <thread>
#include <vector>

#include "postgres/postgres_server.h"

namespace fs = std::filesystem;

namespace {

fs::path programs() {
  std::vector<fs::path> versions;
  std::error_code none;
  for (const auto& version : fs::directory_iterator("/usr/lib/postgresql", none))
    if (fs::exists(version.path() / "bin" / "postgres")) versions.push_back(version.path() / "bin");
  if (versions.empty())
    throw std::runtime_error("PostgreSQL is not installed (package postgresql): there is no /usr/lib/postgresql/*/bin");
  return *std::max_element(versions.begin(), versions.end());
}

// The server refuses to run as root: it runs as the user that the package made for it, else as nobody.
const passwd* unprivileged() {
  if (geteuid() != 0) return nullptr;
  for (const char* name : {"postgres", "nobody"})
    if (const passwd* user = getpwnam(name)) return user;
  throw std::runtime_error("PostgreSQL does not run as root, and there is neither a user postgres nor nobody");
}

// In a child process: become the user, write into the log, run the program. Comes back only when that fails.
void become(const passwd* user, const fs::path& log, const std::vector<std::string>& words) {
  const int out = open(log.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0666);
  if (out >= 0) dup2(out, STDOUT_FILENO), dup2(out, STDERR_FILENO);
  if (user && (setgid(user->pw_gid) != 0 || setuid(user->pw_uid) != 0)) return;
  if (chdir("/") != 0) return;
  std::vector<char*> arguments;
  for (const std::string& word : words) arguments.push_back(const_cast<char*>(word.c_str()));
  arguments.push_back(nullptr);
  execv(arguments[0], arguments.data());
}

std::string contents(const fs::path& file) {
  std::ostringstream text;
  text << std::ifstream(file).rdbuf();
  return text.str();
}

bool waitFor(pid_t child) {
  int status = 0;
  while (waitpid(child, &status, 0) < 0)
    if (errno != EINTR) return false;
  return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

}  // namespace

struct PostgresServer::Impl {
  fs::path folder, bin;
  const passwd* user = nullptr;
  int owner = -1;  // the guardian reads the other end: it is closed when this process ends
  pid_t guardian = -1;

  Impl() : bin(programs()), user(unprivileged()) {
    std::string name = (fs::temp_directory_path() / "gljz-postgres-XXXXXX").string();
    if (!mkdtemp(name.data())) throw std::runtime_error("no temporary folder for PostgreSQL: " + name);
    folder = name;
    if (user && chown(name.c_str(), user->pw_uid, user->pw_gid) != 0)
      throw std::runtime_error("the folder " + name + " cannot be given to " + user->pw_name);
    // Others reach the socket; the data folder inside is the server's own.
    fs::permissions(folder, fs::perms::owner_all | fs::perms::group_read | fs::perms::group_exec |
                                fs::perms::others_read | fs::perms::others_exec);
    try {
      // No writes are forced to the disk: what is lost with the machine is lost with the test.
      run({bin / "initdb", "--pgdata", data(), "--auth=trust", "--username", administrator, "--encoding=UTF8",
           "--locale=C", "--no-sync", "--no-instructions"});
      // One user has to prove who he is, so that passwords are used.
      std::ofstream rules(data() + "/pg_hba.conf");
      rules << "local all " << passwordUser << " scram-sha-256\nlocal all all trust\n";
      rules.close();
      guard();
      run({bin / "psql", "--host", folder, "--username", administrator, "--dbname", "postgres", "--quiet", "--command",
           "create database ledger", "--command",
           std::string("create role ") + passwordUser + " login password '" + password + "'"});
    } catch (...) {
      stop();
      throw;
    }
  }
  ~Impl() { stop(); }

  std::string data() const { return folder / "data"; }
  fs::path log() const { return folder / "log"; }

  void run(const std::vector<std::string>& words) const {
    const pid_t child = fork();
    if (child == 0) {
      become(user, log(), words);
      _exit(127);
    }
    if (child < 0 || !waitFor(child)) throw std::runtime_error(words[0] + " failed: " + contents(log()));
  }

  // The guardian starts the server and waits until this process closes its end of a pipe, be it by ending. Then it
  // stops the server and removes the folder.
  void guard() {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) throw std::runtime_error("no pipe to the guardian of PostgreSQL");
    guardian = fork();
    if (guardian == 0) {
      close(ends[1]);
      watch(ends[0]);
      _exit(0);
    }
    close(ends[0]);
    owner = ends[1];
    if (guardian < 0) throw std::runtime_error("no process for the guardian of PostgreSQL");
    waitForServer();
  }

  void watch(int end) const {
    // Not the least the pipes of other servers' guardians, which wait for their closing.
    constexpr int mostFiles = 1024;
    for (int file = STDERR_FILENO + 1; file < mostFiles; ++file)
      if (file != end) close(file);
    setsid();  // a key that ends the owner is no reason to leave the server behind
    const int nothing = open("/dev/null", O_RDWR);
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) dup2(nothing, stream);
    const pid_t server = fork();
    if (server == 0) {
      become(user, log(),
             {bin / "postgres",
              "-D",
              data(),
              "-k",
              folder,
              "-c",
              "listen_addresses=",
              "-c",
              "fsync=off",
              "-c",
              "synchronous_commit=off",
              "-c",
              "full_page_writes=off",
              "-c",
              "max_connections=20",
              "-c",
              "shared_buffers=64MB",
              "-c",
              "max_wal_size=2GB",
              "-c",
              "password_encryption=scram-sha-256"});
      _exit(127);
    }
    char byte = 0;
    while (read(end, &byte, 1) < 0 && errno == EINTR) {
    }
    if (server > 0) {
      kill(server, SIGQUIT);  // at once, without waiting for clients
      waitFor(server);
    }
    std::error_code ignored;
    fs::remove_all(folder, ignored);
  }

  void waitForServer() const {
    constexpr auto patience = std::chrono::seconds(20);
    const auto start = std::chrono::steady_clock::now();
    const std::string probe = (bin / "pg_isready").string();
    while (std::chrono::steady_clock::now() - start < patience) {
      try {
        run({probe, "--quiet", "--host", folder});
        return;
      } catch (const std::runtime_error&) {
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
      }
    }
    throw std::runtime_error("PostgreSQL does not answer: " + contents(log()));
  }

  void stop() {
    if (owner >= 0) {
      close(owner);
      waitFor(guardian);
    }
    owner = -1;
    std::error_code ignored;
    fs::remove_all(folder, ignored);
  }
};

PostgresServer::PostgresServer() : impl_(std::make_unique<Impl>()) {}
PostgresServer::~PostgresServer() = default;

std::string PostgresServer::folder() const {
  return impl_->folder.string();
}
