#include "Editor.h"

#include "Failure.h"
#include "HistoryFile.h"
#include "Keys.h"
#include "Utf8.h"
#include "Words.h"

#include <histedit.h>
#include <langinfo.h>
#include <unistd.h>

#include <algorithm>
#include <clocale>
#include <cstdio>
#include <optional>

namespace Maintctl {

/// What holds the C library's objects.
class Editor::Library {
public:
  Library(const std::string& prompt, Completer completer);
  Library(const Library&) = delete;
  Library& operator=(const Library&) = delete;
  ~Library() {
    el_end(editor_);
    history_wend(history_);
  }

  bool next(std::string& line);

private:
  static Library& of(EditLine* editor);
  static int read(EditLine* editor, wchar_t* to);
  static unsigned char complete(EditLine* editor, int key);

  std::optional<std::string> typed();
  void terminal(Keys::Change change);
  void keep(const std::string& line);
  unsigned char complete();
  static void list(const std::vector<std::string>& names);

  std::wstring prompt_;
  const Completer completer_;
  HistoryFile file_{HistoryFile::place()};
  std::string last_; // that the history has
  EditLine* const editor_;
  HistoryW* const history_;
  Keys* keys_ = nullptr; // while a line is typed
  bool isInterrupted_ = false;
};

namespace {

/// The C library writes and measures characters by the locale.
void useUtf8() {
  if (std::setlocale(LC_CTYPE, "") == nullptr ||
      std::string_view(nl_langinfo(CODESET)) != "UTF-8") {
    std::setlocale(LC_CTYPE, "C.UTF-8");
  }
}

EditLine* madeEditor() {
  useUtf8();
  return el_init("maintctl", stdin, stdout, stderr);
}

/// As much as all begin with, in whole characters.
std::string commonStart(const std::vector<std::string>& names) {
  std::string common = names.front();
  for (const std::string& name : names) {
    const auto end = std::mismatch(common.begin(), common.end(), name.begin(), name.end()).first;
    common.erase(end, common.end());
  }
  while (!common.empty() && common.size() < names.front().size() &&
         (names.front()[common.size()] & 0xc0) == 0x80) {
    common.pop_back();
  }
  return common;
}

bool mayGoOn(const std::string& name) { return name.ends_with('/'); }

} // namespace

Editor::Library::Library(const std::string& prompt, Completer completer)
    : prompt_(widened(prompt)), completer_(std::move(completer)), editor_(madeEditor()),
      history_(history_winit()) {
  if (editor_ == nullptr || history_ == nullptr) {
    throw Failure(exitFailed, "the terminal cannot be used");
  }
  HistEventW event = {};
  history_w(history_, &event, H_SETSIZE, static_cast<int>(HistoryFile::most));
  history_w(history_, &event, H_SETUNIQUE, 1);
  for (const std::string& line : file_.lines()) {
    keep(line);
  }
  el_wset(editor_, EL_CLIENTDATA, this);
  el_wset(editor_, EL_SIGNAL, 0); // see `Keys`
  el_wset(editor_, EL_GETCFN, &Library::read);
  el_wset(editor_, EL_EDITOR, L"emacs");
  el_wset(
      editor_, EL_PROMPT, +[](EditLine* editor) { return of(editor).prompt_.data(); });
  el_wset(editor_, EL_HIST, history_w, history_);
  using Function = unsigned char (*)(EditLine*, int);
  el_wset(editor_, EL_ADDFN, L"maintctl-complete", L"Completes a word",
          static_cast<Function>(&Library::complete));
  el_wset(editor_, EL_BIND, L"^I", L"maintctl-complete", nullptr);
  el_source(editor_, nullptr); // the user's own settings
}

Editor::Library& Editor::Library::of(EditLine* editor) {
  void* data = nullptr;
  el_wget(editor, EL_CLIENTDATA, &data);
  return *static_cast<Library*>(data);
}

void Editor::Library::terminal(Keys::Change change) {
  if (change == Keys::resized) {
    el_resize(editor_);
  } else {
    el_wset(editor_, EL_PREP_TERM, change == Keys::takeBack ? 1 : 0);
  }
  if (change == Keys::takeBack) {
    el_wset(editor_, EL_REFRESH);
  }
}

int Editor::Library::read(EditLine* editor, wchar_t* to) {
  Library& library = of(editor);
  *to = L'\0';
  switch (library.keys_->next(*to)) {
  case Keys::key:
    return 1;
  case Keys::interrupted:
    library.isInterrupted_ = true;
    std::fputs("^C", stdout);
    *to = L'\n'; // the line ends, so that the next prompt comes behind all of it
    return 1;
  case Keys::ended:
    break;
  }
  return 0;
}

/// A line as it was typed, without its end; none at the end of all.
std::optional<std::string> Editor::Library::typed() {
  Keys keys(STDIN_FILENO, [this](Keys::Change change) { terminal(change); });
  keys_ = &keys;
  while (true) {
    int length = 0;
    isInterrupted_ = false;
    const wchar_t* const text = el_wgets(editor_, &length);
    if (isInterrupted_) {
      continue;
    }
    keys_ = nullptr;
    if (text == nullptr || length <= 0) {
      return {};
    }
    std::string line = narrowed({text, static_cast<std::size_t>(length)});
    line.erase(line.find_last_not_of(" \t\n") + 1);
    return line;
  }
}

bool Editor::Library::next(std::string& line) {
  std::optional<std::string> typed = this->typed();
  if (!typed) {
    std::fputs("\n", stdout); // the shell's prompt is not to stand behind ours
    std::fflush(stdout);
    return false;
  }
  line = std::move(*typed);
  if (!line.empty() && line != last_) {
    keep(line);
    file_.add(line);
  }
  return true;
}

void Editor::Library::keep(const std::string& line) {
  HistEventW event = {};
  history_w(history_, &event, H_ENTER, widened(line).c_str());
  last_ = line;
}

unsigned char Editor::Library::complete(EditLine* editor, int /*key*/) {
  try {
    return of(editor).complete();
  } catch (const std::exception&) {
    return CC_REFRESH_BEEP; // no exception may pass through the C library
  }
}

unsigned char Editor::Library::complete() {
  const LineInfoW* const info = el_wline(editor_);
  std::vector<std::string> words =
      wordsSoFar(narrowed({info->buffer, static_cast<std::size_t>(info->cursor - info->buffer)}));
  const std::string typed = words.back();
  words.back() = unquotedSoFar(typed);
  const std::vector<std::string> names = completer_(words);
  if (names.empty()) {
    return CC_REFRESH_BEEP;
  }
  const std::string start = commonStart(names);
  const bool isWhole = names.size() == 1 && !mayGoOn(start);
  if (!isWhole && start == words.back()) {
    list(names);
    return CC_REDISPLAY;
  }
  const std::wstring fresh = widened(inQuotes(start, isWhole) + (isWhole ? " " : ""));
  el_wdeletestr(editor_, static_cast<int>(widened(typed).size()));
  return el_winsertstr(editor_, fresh.c_str()) == 0 ? CC_REFRESH : CC_REFRESH_BEEP;
}

/// Of paths, the last segments.
void Editor::Library::list(const std::vector<std::string>& names) {
  std::fputs("\n", stdout);
  for (const std::string& name : names) {
    const std::size_t slash = name.find_last_of('/', name.size() - 2);
    std::fputs(shown(name.substr(slash == name.npos ? 0 : slash + 1)).c_str(), stdout);
    std::fputs("\n", stdout);
  }
}

Editor::Editor(std::string prompt, Completer completer)
    : library_(std::make_unique<Library>(prompt, std::move(completer))) {}
Editor::~Editor() = default;

bool Editor::next(std::string& line) { return library_->next(line); }

} // namespace Maintctl
