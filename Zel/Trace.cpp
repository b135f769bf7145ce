#include <Zel/Trace>

#include <Zel/Exception>
#include <Zel/Format>

#include <iostream>
#include <map>

namespace Zel {

std::ostream* coverageStream_ = nullptr;

namespace {

/// Never destroyed, so that destructors of statics may still trace.
std::map<std::string, TraceFacility*, std::less<>>& facilities() {
  static auto* const all = new std::map<std::string, TraceFacility*, std::less<>>;
  return *all;
}

std::ostream*& traceStream() {
  static std::ostream* stream = &std::cerr;
  return stream;
}

} // namespace

TraceFacility* newTraceFacility(const String8& name) {
  auto* const facility = new TraceFacility(name);
  facility->referencesLeak();
  return facility;
}

TraceFacility::TraceFacility(String8 name) noexcept : name_(std::move(name)) {}

TraceFacility& TraceFacility::named(const String8& name) {
  auto& all = facilities();
  auto at = all.find(name.view());
  if (at == all.end()) {
    at = all.emplace(std::string(name.view()), newTraceFacility(name)).first;
  }
  return *at->second;
}

void TraceFacility::levelIs(int level, bool on) {
  if (level < 0 || level >= levels) {
    throwRangeException(format("trace level %d is outside 0 to %d", level, levels - 1));
  }
  level_[static_cast<unsigned>(level)].store(on, std::memory_order_relaxed);
}

TraceHandle::TraceHandle(String8 name, bool on) : facility_(&TraceFacility::named(name)) {
  if (on) {
    facility_->onIs(true);
  }
}

void traceStreamIs(std::ostream* out) noexcept { traceStream() = out; }

void traceHelper(TraceFacility* facility, const String8& context,
                 std::basic_stringstream<char>& text, int level, bool enabled, const char* file,
                 int line, const char* function) {
  std::ostringstream whole;
  whole << facility->name() << '/' << level << ' ' << file << ':' << line << ' ' << function << " ["
        << context << "] " << text.str() << '\n';
  const std::string bytes = whole.str();
  for (std::ostream* const out : {enabled ? traceStream() : nullptr, coverageStream_}) {
    if (out != nullptr) {
      out->write(bytes.data(), static_cast<std::streamsize>(bytes.size())).flush();
    }
  }
}

} // namespace Zel
