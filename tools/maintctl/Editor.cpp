#include "Editor.h"

#include "Failure.h"
#include "Words.h"

#include <histedit.h>

#include <algorithm>
#include <cstdio>

namespace Maintctl {

/// What holds the C library's objects.
class Editor::Library {
public:
  Library(std::string prompt, Completer completer);
  Library(const Library&) = delete;
  Library& operator=(const Library&) = delete;
  ~Library() {
    el_end(editor_);
    history_end(history_);
  }

  bool next(std::string& line);

private:
  static Library& of(EditLine* editor);
  static unsigned char complete(EditLine* editor, int key);
  unsigned char complete();
  static void list(const std::vector<std::string>& names);

  std::string prompt_;
  const Completer completer_;
  EditLine* const editor_;
  History* const history_;
};

namespace {

constexpr std::string_view blanks = " \t";

/// As much as all begin with.
std::string commonStart(const std::vector<std::string>& names) {
  std::string common = names.front();
  for (const std::string& name : names) {
    const auto end = std::mismatch(common.begin(), common.end(), name.begin(), name.end()).first;
    common.erase(end, common.end());
  }
  return common;
}

/// The words of a line that is not at its end yet; the last may be empty.
std::vector<std::string> wordsSoFar(std::string_view line) {
  const std::size_t blank = line.find_last_of(blanks);
  const std::size_t start = blank == line.npos ? 0 : blank + 1;
  std::vector<std::string> words = wordsOf(line.substr(0, start));
  words.emplace_back(line.substr(start));
  return words;
}

} // namespace

Editor::Library::Library(std::string prompt, Completer completer)
    : prompt_(std::move(prompt)), completer_(std::move(completer)),
      editor_(el_init("maintctl", stdin, stdout, stderr)), history_(history_init()) {
  if (editor_ == nullptr || history_ == nullptr) {
    throw Failure(exitFailed, "the terminal cannot be used");
  }
  HistEvent event = {};
  history(history_, &event, H_SETSIZE, 1000);
  history(history_, &event, H_SETUNIQUE, 1);
  el_set(editor_, EL_CLIENTDATA, this);
  el_set(editor_, EL_SIGNAL, 1); // the terminal is put right before a signal acts
  el_set(editor_, EL_EDITOR, "emacs");
  el_set(
      editor_, EL_PROMPT, +[](EditLine* editor) { return of(editor).prompt_.data(); });
  el_set(editor_, EL_HIST, history, history_);
  using Function = unsigned char (*)(EditLine*, int);
  el_set(editor_, EL_ADDFN, "maintctl-complete", "Completes a word",
         static_cast<Function>(&Library::complete));
  el_set(editor_, EL_BIND, "^I", "maintctl-complete", nullptr);
  el_source(editor_, nullptr); // the user's own settings
}

bool Editor::Library::next(std::string& line) {
  int length = 0;
  const char* const text = el_gets(editor_, &length);
  if (text == nullptr || length <= 0) {
    std::fputs("\n", stdout); // the shell's prompt is not to stand behind ours
    std::fflush(stdout);
    return false;
  }
  line.assign(text, static_cast<std::size_t>(length));
  if (line.find_first_not_of(" \t\n") != line.npos) {
    HistEvent event = {};
    history(history_, &event, H_ENTER, text);
  }
  while (line.ends_with('\n')) {
    line.pop_back();
  }
  return true;
}

Editor::Library& Editor::Library::of(EditLine* editor) {
  void* data = nullptr;
  el_get(editor, EL_CLIENTDATA, &data);
  return *static_cast<Library*>(data);
}

unsigned char Editor::Library::complete(EditLine* editor, int /*key*/) {
  try {
    return of(editor).complete();
  } catch (const std::exception&) {
    return CC_REFRESH_BEEP; // no exception may pass through the C library
  }
}

unsigned char Editor::Library::complete() {
  const LineInfo* const info = el_line(editor_);
  const std::vector<std::string> words =
      wordsSoFar({info->buffer, static_cast<std::size_t>(info->cursor - info->buffer)});
  const std::vector<std::string> names = completer_(words);
  if (names.empty()) {
    return CC_REFRESH_BEEP;
  }
  std::string start = commonStart(names);
  if (names.size() == 1 && !start.ends_with('/')) {
    start += ' ';
  }
  if (start.size() > words.back().size()) {
    el_insertstr(editor_, start.c_str() + words.back().size());
    return CC_REFRESH;
  }
  list(names);
  return CC_REDISPLAY;
}

/// Of paths, the last segments.
void Editor::Library::list(const std::vector<std::string>& names) {
  std::fputs("\n", stdout);
  for (const std::string& name : names) {
    const std::size_t slash = name.find_last_of('/', name.size() - 2);
    std::fputs(name.c_str() + (slash == name.npos ? 0 : slash + 1), stdout);
    std::fputs("\n", stdout);
  }
}

Editor::Editor(std::string prompt, Completer completer)
    : library_(std::make_unique<Library>(std::move(prompt), std::move(completer))) {}
Editor::~Editor() = default;

bool Editor::next(std::string& line) { return library_->next(line); }

} // namespace Maintctl
