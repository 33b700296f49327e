// with_postgres PROGRAM [ARGS]: runs a program that has a PostgreSQL server of its own; GLJZ_POSTGRES is the folder of
// the server's socket. The server is gone when the program has ended. The answer is the program's.

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <exception>
#include <iostream>

#include "postgres/postgres_server.h"

int main(int count, char** arguments) {
  if (count < 2) {
    std::cerr << "with_postgres: a program must follow\n";
    return EXIT_FAILURE;
  }
  try {
    const PostgresServer server;
    setenv("GLJZ_POSTGRES", server.folder().c_str(), 1);
    pid_t child = 0;
    if (const int failure = posix_spawnp(&child, arguments[1], nullptr, nullptr, arguments + 1, environ);
        failure != 0) {
      std::cerr << "with_postgres: " << arguments[1] << " cannot be started (" << failure << ")\n";
      return EXIT_FAILURE;
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : EXIT_FAILURE;
  } catch (const std::exception& e) {
    std::cerr << "with_postgres: " << e.what() << '\n';
    return EXIT_FAILURE;
  }
}
