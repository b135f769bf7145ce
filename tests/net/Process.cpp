#include "Process.h"

#include "support/Shell.h"

#include <csignal>

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <unistd.h>

namespace TestNet {

namespace {

/// So long that it tells of a hang alone.
constexpr int patience = 60000; // milliseconds

} // namespace

Process::Process(std::vector<std::string> words, std::filesystem::path errors, const char* program)
    : errors_(std::move(errors)) {
  int in[2];
  int out[2];
  if (::pipe2(in, O_CLOEXEC) != 0 || ::pipe2(out, O_CLOEXEC) != 0) {
    throw std::runtime_error("no pipe");
  }
  words.insert(words.begin(), program);
  std::vector<char*> arguments;
  for (std::string& word : words) {
    arguments.push_back(word.data());
  }
  arguments.push_back(nullptr);
  const int file = ::open(errors_.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
  const pid_t parent = ::getpid();
  id_ = ::fork();
  if (id_ == 0) {
    std::signal(SIGHUP, SIG_DFL);       // which who runs the tests may have ignored
    ::prctl(PR_SET_PDEATHSIG, SIGKILL); // nothing stays behind a test that is killed
    if (::getppid() == parent) {
      ::dup2(in[0], STDIN_FILENO);
      ::dup2(out[1], STDOUT_FILENO);
      ::dup2(file, STDERR_FILENO);
      ::execv(arguments[0], arguments.data());
    }
    ::_exit(127);
  }
  ::close(in[0]);
  ::close(out[1]);
  ::close(file);
  in_ = in[1];
  out_ = out[0];
  if (id_ < 0) {
    throw std::runtime_error("no process");
  }
}

Process::~Process() {
  kill();
  ::close(in_);
  ::close(out_);
}

void Process::signal(int number) const {
  if (id_ > 0) {
    ::kill(id_, number);
  }
}

void Process::say(const std::string& line) const {
  const std::string whole = line + "\n";
  // One that has been killed does not read; the answer tells.
  const auto before = std::signal(SIGPIPE, SIG_IGN);
  EXPECT_LE(::write(in_, whole.data(), whole.size()), static_cast<ssize_t>(whole.size()));
  std::signal(SIGPIPE, before);
}

std::string Process::hear() {
  for (;;) {
    const std::size_t end = heard_.find('\n');
    if (end != std::string::npos) {
      const std::string line = heard_.substr(0, end);
      heard_.erase(0, end + 1);
      return line;
    }
    pollfd one = {out_, POLLIN, 0};
    if (::poll(&one, 1, patience) <= 0) {
      return "(nothing)";
    }
    char bytes[4096];
    const ssize_t count = ::read(out_, bytes, sizeof bytes);
    if (count <= 0) {
      return "(ended)";
    }
    heard_.append(bytes, static_cast<std::size_t>(count));
  }
}

int Process::wait() {
  int status = 0;
  if (id_ > 0) {
    ::waitpid(id_, &status, 0);
  }
  id_ = -1;
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

void Process::kill() {
  signal(SIGKILL);
  wait();
}

bool Process::isStopped() const {
  int status = 0;
  return ::waitpid(id_, &status, WUNTRACED) == id_ && WIFSTOPPED(status);
}

int Process::end() {
  ::close(in_);
  in_ = -1;
  return wait();
}

std::string Process::errors() const { return Support::contentOf(errors_); }

bool Process::complains(const std::string& text) const {
  for (int waited = 0; waited < patience; waited += 10) {
    if (errors().find(text) != std::string::npos) {
      return true;
    }
    ::usleep(10000);
  }
  return false;
}

} // namespace TestNet
