#include "sockets/Server.h"

#include <cstdlib>
#include <filesystem>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace Bench::Sockets {

namespace {

[[noreturn]] void become(const std::vector<std::string>& command) {
  std::vector<char*> words;
  for (const std::string& word : command) {
    words.push_back(const_cast<char*>(word.c_str()));
  }
  words.push_back(nullptr);
  execvp(words.front(), words.data());
  fail(command.front() + " does not start");
}

std::string replaced(std::string text, const std::string& folder) {
  for (std::size_t at = text.find('@'); at != std::string::npos; at = text.find('@', at)) {
    text.replace(at, 1, folder);
    at += folder.size();
  }
  return text;
}

} // namespace

Server::Server(std::vector<std::string> command) {
  char name[] = "/tmp/bench-server-XXXXXX";
  if (mkdtemp(name) == nullptr) {
    fail("no folder for the server");
  }
  folder_ = name;
  for (std::string& word : command) {
    word = replaced(word, folder_);
  }
  process_ = fork();
  if (process_ == 0) {
    prctl(PR_SET_PDEATHSIG, SIGTERM);
    placeIs(Place::first);
    become(command);
  }
  waitFor([&] {
    if (waitpid(process_, nullptr, WNOHANG) != 0) {
      fail(command.front() + " has ended");
    }
    return std::filesystem::exists(socket());
  });
}

Server::~Server() {
  kill(process_, SIGTERM);
  waitpid(process_, nullptr, 0);
  std::filesystem::remove_all(folder_);
}

} // namespace Bench::Sockets
