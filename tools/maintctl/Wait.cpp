#include "CommandList.h"
#include "Nearest.h"
#include "RemoteDevice.h"
#include "Scope.h"
#include "Tree.h"
#include "Values.h"
#include "Words.h"

#include <algorithm>
#include <deque>
#include <optional>

namespace Maintctl {

namespace {

/// A device's tree as it is, in which nothing happens while it is looked at.
class Glance : public Device {
public:
  explicit Glance(Device& device) : dir_(device.dir()), roots_(device.roots()) {}

  const Zel::Ptr<Zel::Dir>& dir() const override { return dir_; }
  std::map<Zel::Name, Zel::String8> roots() override { return roots_; }
  void need(const Zel::Name& /*root*/, bool /*toWrite*/) override {}
  void flush() override {}
  bool wait(const std::function<bool()>& isDone, double /*seconds*/) override { return isDone(); }
  Zel::Session::DigestResult verify(const Zel::Name& /*root*/) override {
    return Zel::Session::digestUnknown;
  }

private:
  const Zel::Ptr<Zel::Dir> dir_;
  const std::map<Zel::Name, Zel::String8> roots_;
};

/// Passes what is at a path, if it is a value and something is there, to `use`.
template <class Use>
void withValue(Device& glance, const std::string& path, bool isValue, const Use& use) {
  if (!isValue) {
    return;
  }
  try {
    const Target target = Tree(glance).at(path, Purpose::read);
    const Zel::AttrRow& row = *target.row;
    if (target.kind == Target::attribute) {
      Zel::ValueSlot value(*row.value, [&](void* to) { row.read(target.owner.ptr(), to); });
      use(*row.value, value.at());
    } else if (target.isThere()) {
      Zel::ValueSlot key(*row.key);
      readKey(target.segment, *row.key, key.at(), path);
      Zel::ValueSlot value(
          *row.value, [&](void* to) { row.collection->read(target.owner.ptr(), key.at(), to); });
      use(*row.value, value.at());
    }
  } catch (const Failure& failure) {
    if (failure.code() != exitNotFound) { // not there yet
      throw;
    }
  }
}

/// Whether anything is at a path.
bool isThere(Device& glance, const std::string& path) {
  try {
    const Target target = Tree(glance).at(path, Purpose::read);
    return target.kind != Target::entry || target.isThere();
  } catch (const Failure& failure) {
    if (failure.code() != exitNotFound) {
      throw;
    }
    return false;
  }
}

/// Values that one may have.
class Values {
public:
  Values(const std::vector<std::string>& texts, const Scope& scope) {
    for (const std::string& text : texts) {
      const Zel::ValueRecord& record = *scope.row()->value;
      readText(text, record, values_.emplace_back(record).at(), scope.path());
    }
  }

  bool holds(const Zel::ValueRecord& record, const void* value) {
    return std::any_of(values_.begin(), values_.end(),
                       [&](Zel::ValueSlot& one) { return record.equal(one.at(), value); });
  }
  std::vector<std::string> texts() {
    std::vector<std::string> all;
    for (Zel::ValueSlot& one : values_) {
      all.push_back(textForm(one.record(), one.at()));
    }
    return all;
  }

private:
  std::deque<Zel::ValueSlot> values_; // which cannot move
};

class Wait : public Command {
public:
  void declare(Parameters& parameters) override {
    parameters.optionalWord("PATH", path_, "Of a value; with --live, of a root, or all without it");
    parameters.words("VALUE", wanted_, "What is waited for, one or the other");
    parameters.option("unless", "VALUE", unwanted_,
                      "Fail at once if the value is this; may be given several times");
    parameters.flag("gone", gone_, "Wait until nothing is at the path, or the value is as said");
    parameters.flag("live", live_, "Wait until the server is there and has sent all");
  }

  int run(Context& context) override {
    refuseNonsense();
    const Options& options = context.options();
    const double end = Net::Turns::now() + options.timeout;
    std::optional<RemoteDevice> remote;
    if (!options.socket.empty()) {
      RemoteDevice::Settings settings;
      settings.path = options.socket;
      settings.timeout = options.timeout;
      settings.isStopped = options.isTyped;
      settings.waits = settings.reconnects = true;
      remote.emplace(settings);
    }
    Device& device = remote ? *remote : context.device();
    const Scope scope(device, path_);
    if (live_) {
      waitLive(device, scope);
      return exitDone;
    }
    device.need(scope.root(), false);
    const auto isLive = [&] {
      return !remote || remote->mounts()->mount(scope.root())->state() == Zel::Mount::live;
    };
    waitValue(device, scope, isLive, end);
    return exitDone;
  }

private:
  void refuseNonsense() const {
    if (live_ && !wanted_.empty()) {
      throw Failure(exitUsage,
                    "--live waits for no value, leave out " + printable(wanted_.front()));
    }
    if (live_ && (gone_ || !unwanted_.empty())) {
      throw Failure(exitUsage, std::string("--live waits for no value, leave out ") +
                                   (gone_ ? "--gone" : "--unless"));
    }
    if (!live_ && (path_ == "/" || (!gone_ && wanted_.empty()))) {
      throw Failure(exitUsage, "wait needs a path and a value, or --gone, or --live");
    }
  }

  static void waitLive(Device& device, const Scope& scope) {
    for (const auto& [name, type] : device.roots()) {
      if (scope.root().empty() || name == scope.root()) {
        device.need(name, false);
      }
    }
  }

  void waitValue(Device& device, const Scope& scope, const std::function<bool()>& isLive,
                 double end) const {
    const bool needsValue = !wanted_.empty() || !unwanted_.empty();
    if (needsValue ? !scope.isValue() : scope.row() == nullptr) {
      throw Failure(exitUsage, needsValue ? scope.path() + " is no value, 'ls " + scope.path() +
                                                "' lists what it has"
                                          : scope.path() + " is a root, which stays");
    }
    Values wanted(wanted_, scope);
    Values unwanted(unwanted_, scope);
    Glance glance(device);
    const Zel::Dir::Active references(device.dir());
    const auto isDone = [&] {
      bool isSo = false;
      if (isLive()) {
        isSo = gone_ && !isThere(glance, scope.path());
        withValue(glance, scope.path(), needsValue, [&](const auto& of, const void* value) {
          isSo = wanted.holds(of, value);
          if (!isSo && unwanted.holds(of, value)) {
            throw Failure(exitFailed, scope.path() + " is " + textForm(of, value));
          }
        });
      }
      return isSo;
    };
    if (!device.wait(isDone, std::max(0.0, end - Net::Turns::now()))) {
      std::string is = isThere(glance, scope.path()) ? " is there" : " is not there";
      withValue(glance, scope.path(), needsValue,
                [&](const auto& of, const void* value) { is = " is " + textForm(of, value); });
      std::vector<std::string> others = wanted.texts();
      if (gone_) {
        others.emplace_back("gone");
      }
      throw Failure(exitTimeout, scope.path() + is + ", not " + listOf(others, "or"));
    }
  }

  std::string path_ = "/";
  std::vector<std::string> wanted_;
  std::vector<std::string> unwanted_;
  bool gone_ = false;
  bool live_ = false;
};

} // namespace

CommandEntry waitCommand() {
  return {"wait", "Wait until a value is what it should be, or a server is there",
          "  maintctl wait /status/System/state underMaintenance --unless failedEnter\n"
          "  maintctl wait /status/System/state active init\n"
          "  maintctl wait --gone /status/Linecard3\n"
          "  maintctl --timeout 60 wait --live\n"
          "\nIt waits for as long as --timeout says, for a server too.",
          make<Wait>};
}

} // namespace Maintctl
