#include "CommandList.h"
#include "RemoteDevice.h"
#include "Scope.h"
#include "Tree.h"
#include "Values.h"
#include "Words.h"

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

/// Passes what is at a path, if something is there, to `use`.
template <class Use>
void withValue(Device& glance, const std::string& path, const Use& use) {
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

class Wait : public Command {
public:
  void declare(Parameters& parameters) override {
    parameters.optionalWord("PATH", path_, "Of a value; with --live, of a root, or all without it");
    parameters.optionalWord("VALUE", text_, "What is waited for");
    parameters.flag("live", live_, "Wait until the server is there and has sent all");
  }

  int run(Context& context) override {
    if (live_ == text_.has_value()) {
      throw Failure(exitUsage, live_ ? "--live waits for no value, leave out " + printable(*text_)
                                     : "wait needs a path and a value, or --live");
    }
    const Options& options = context.options();
    const double end = Net::Turns::now() + options.timeout;
    std::optional<RemoteDevice> remote;
    if (!options.socket.empty()) {
      RemoteDevice::Settings settings;
      settings.path = options.socket;
      settings.timeout = options.timeout;
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
  static void waitLive(Device& device, const Scope& scope) {
    for (const auto& [name, type] : device.roots()) {
      if (scope.root().empty() || name == scope.root()) {
        device.need(name, false);
      }
    }
  }

  void waitValue(Device& device, const Scope& scope, const std::function<bool()>& isLive,
                 double end) const {
    if (!scope.isValue()) {
      throw Failure(exitUsage,
                    scope.path() + " is no value, 'ls " + scope.path() + "' lists what it has");
    }
    const Zel::ValueRecord& record = *scope.row()->value;
    Zel::ValueSlot wanted(record);
    readText(*text_, record, wanted.at(), scope.path());
    Glance glance(device);
    const Zel::Dir::Active references(device.dir());
    const auto isDone = [&] {
      bool isEqual = false;
      if (isLive()) {
        withValue(glance, scope.path(), [&](const Zel::ValueRecord& of, const void* value) {
          isEqual = of.equal(value, wanted.at());
        });
      }
      return isEqual;
    };
    if (!device.wait(isDone, std::max(0.0, end - Net::Turns::now()))) {
      std::string is = " is not there";
      withValue(glance, scope.path(), [&](const Zel::ValueRecord& of, const void* value) {
        is = " is " + textForm(of, value);
      });
      throw Failure(exitTimeout, scope.path() + is + ", not " + textForm(record, wanted.at()));
    }
  }

  std::string path_ = "/";
  std::optional<std::string> text_;
  bool live_ = false;
};

} // namespace

CommandEntry waitCommand() {
  return {"wait", "Wait until a value is what it should be, or a server is there",
          "  maintctl wait /status/System/state underMaintenance\n"
          "  maintctl --timeout 60 wait --live\n"
          "\nIt waits for as long as --timeout says, for a server too.",
          make<Wait>};
}

} // namespace Maintctl
