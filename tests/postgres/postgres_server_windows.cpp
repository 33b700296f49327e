// The server runs outside of Wine: with_postgres has made it, and says in the environment where its socket is. The
// drivers are those of the machine too, since Wine's driver manager hands over to its.

#include <cstdlib>
#include <stdexcept>

#include "postgres/postgres_server.h"

struct PostgresServer::Impl {
  std::string folder;
};

PostgresServer::PostgresServer() : impl_(std::make_unique<Impl>()) {
  const char* folder = std::getenv("GLJZ_POSTGRES");
  if (folder == nullptr) throw std::runtime_error("GLJZ_POSTGRES is not set: with_postgres starts this program");
  impl_->folder = folder;
}

PostgresServer::~PostgresServer() = default;

std::string PostgresServer::folder() const {
  return impl_->folder;
}
