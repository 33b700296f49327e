#include "embedded/server.h"

#include <algorithm>
#include <chrono>
#include <ctime>
#include <filesystem>
#include <map>
#include <mutex>

#include "embedded/session_impl.h"

namespace embedded {

namespace fs = std::filesystem;

namespace {

constexpr const char* extension = ".db";

fs::path pathOf(const std::string& utf8) {
  return fs::path(std::u8string(utf8.begin(), utf8.end()));
}

std::int64_t localTicks() {
  // Seconds since 1970 in local time, from the calendar parts, so that no zone arithmetic is needed.
  const auto now = std::chrono::system_clock::now();
  const std::time_t t = std::chrono::system_clock::to_time_t(now);
  std::tm parts{};
#ifdef _WIN32
  localtime_s(&parts, &t);
#else
  localtime_r(&t, &parts);
#endif
  const auto day = std::chrono::sys_days(std::chrono::year(parts.tm_year + 1900) / (parts.tm_mon + 1) / parts.tm_mday);
  const auto first = std::chrono::sys_days(std::chrono::year(1900) / 1 / 1);
  const std::int64_t seconds =
      (day - first).count() * 86400LL + parts.tm_hour * 3600 + parts.tm_min * 60 + parts.tm_sec;
  const auto ms = std::chrono::duration_cast<std::chrono::milliseconds>(now.time_since_epoch()).count() % 1000;
  return seconds * 300 + ms * 3 / 10;
}

std::mutex registryMutex;
std::map<std::string, std::weak_ptr<Server>>& registry() {
  static std::map<std::string, std::weak_ptr<Server>> r;
  return r;
}

}  // namespace

std::string Server::Impl::fileOf(const std::string& database) const {
  const auto path = (pathOf(folder) / pathOf(database + extension)).u8string();
  return {reinterpret_cast<const char*>(path.data()), path.size()};
}

std::optional<std::string> Server::Impl::find(std::string_view database) const {
  if (database.empty()) return std::nullopt;
  std::error_code failed;
  for (const auto& entry : fs::directory_iterator(pathOf(folder), failed)) {
    if (entry.path().extension() != extension) continue;
    const auto stem = entry.path().stem().u8string();
    const std::string name(reinterpret_cast<const char*>(stem.data()), stem.size());
    if (tsql::sameName(name, database)) return name;
  }
  return std::nullopt;
}

Server::Server(std::unique_ptr<Impl> impl) : impl_(std::move(impl)) {}
Server::~Server() = default;

std::shared_ptr<Server> Server::open(const std::string& folder, bool create) {
  using platform::RunTimeError;
  std::error_code failed;
  const auto path = pathOf(folder);
  if (create) {
    fs::create_directories(path, failed);
    if (failed)
      throw RunTimeError(75, "Path/File access error: the folder '" + folder + "' cannot be made: " + failed.message());
  }
  if (!fs::is_directory(path, failed)) throw RunTimeError(76, "Path not found: '" + folder + "' is no folder");
  const auto canonical = fs::canonical(path, failed).u8string();
  const std::string key(reinterpret_cast<const char*>(canonical.data()), canonical.size());
  const std::lock_guard lock(registryMutex);
  // SQLite's memory statistics cost a lock at every allocation. It takes the setting only before its first use.
  static const int statistics = sqlite3_config(SQLITE_CONFIG_MEMSTATUS, 0);
  static_cast<void>(statistics);
  auto& known = registry()[key];
  if (auto s = known.lock()) return s;
  auto impl = std::make_unique<Impl>();
  impl->folder = key;
  impl->clock = localTicks;
  std::shared_ptr<Server> s(new Server(std::move(impl)));
  known = s;
  return s;
}

const std::string& Server::folder() const {
  return impl_->folder;
}

std::vector<std::string> Server::databases() const {
  std::vector<std::string> names;
  std::error_code failed;
  for (const auto& entry : fs::directory_iterator(pathOf(impl_->folder), failed)) {
    if (entry.path().extension() != extension) continue;
    const auto stem = entry.path().stem().u8string();
    std::string name(reinterpret_cast<const char*>(stem.data()), stem.size());
    if (!tsql::sameName(name, "tempdb")) names.push_back(std::move(name));
  }
  std::sort(names.begin(), names.end());
  return names;
}

bool Server::hasDatabase(std::string_view name) const {
  return impl_->find(name).has_value();
}
void Server::setTimeout(int milliseconds) {
  impl_->timeout = milliseconds;
}
void Server::setClock(std::function<std::int64_t()> clock) {
  impl_->clock = clock ? std::move(clock) : localTicks;
}

}  // namespace embedded
