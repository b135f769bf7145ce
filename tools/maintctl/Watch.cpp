#include "CommandList.h"
#include "Plain.h"
#include "RemoteDevice.h"
#include "Utf8.h"
#include "Values.h"
#include "Walk.h"
#include "WatchedTree.h"
#include "Words.h"

#include <asio/signal_set.hpp>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <chrono>
#include <csignal>

namespace Maintctl {

namespace {

using nlohmann::json;
using Zel::Mount;
using Zel::Ptr;

/// Writes down what happens, a line each. Callbacks of entities must not fail, as a write to a pipe
/// may, so the lines are printed later.
class Teller final : public WatchedTree::Teller, public Visitor {
public:
  Teller(std::vector<Scope> scopes, bool isJson) : scopes_(std::move(scopes)), isJson_(isJson) {}

  const std::vector<Scope>& scopes() const noexcept { return scopes_; }
  bool wants(std::string_view path) const override {
    return std::any_of(scopes_.begin(), scopes_.end(),
                       [&](const Scope& scope) { return scope.holds(path); });
  }
  bool isBehind(std::string_view path) const override {
    return std::any_of(scopes_.begin(), scopes_.end(),
                       [&](const Scope& scope) { return scope.isBehind(path); });
  }

  void changed(const std::string& path, const Zel::ValueRecord& record, const void* value,
               const void* old) override {
    if (isJson_) {
      json all{{"path", path}, {"value", jsonOf(record, value)}};
      addOld(all, record, old);
      line(std::move(all));
    } else {
      line(path + " = " + valueText(record, value) + wasText(record, old));
    }
  }
  void added(const std::string& path) override {
    isJson_ ? line(json{{"path", path}, {"added", true}}) : line(path + " " + added_);
  }
  void deleted(const std::string& path) override {
    isJson_ ? line(json{{"path", path}, {"deleted", true}}) : line(path + " " + deleted_);
  }
  void deleted(const std::string& path, const Zel::ValueRecord& record, const void* old) override {
    if (isJson_) {
      json all{{"path", path}, {"deleted", true}};
      addOld(all, record, old);
      line(std::move(all));
    } else {
      line(path + " " + deleted_ + wasText(record, old));
    }
  }

  /// How a mirror stands.
  void state(const std::string& root, const std::string& text, const Mount& mount) {
    const std::string reason = shown(mount.reason().view());
    if (isJson_) {
      json all{{"path", root}, {"state", Mount::stateName(mount.state())}};
      if (!reason.empty()) {
        all["reason"] = reason;
      }
      line(std::move(all));
    } else {
      line(root + " is " + text + (reason.empty() ? "" : ": " + reason), "# ");
    }
  }

  // All that is there at first.
  bool wants(const Zel::AttrRow& /*row*/) override { return true; }
  void value(const std::string& path, const Zel::ValueRecord& record, const void* value) override {
    if (wants(path)) {
      changed(path, record, value, nullptr);
    }
  }
  void member(const std::string& /*path*/, const Zel::AttrRow& /*row*/,
              const Zel::Entity& /*member*/) override {}

  std::string takeLines() { return std::exchange(lines_, {}); }

private:
  using Clock = std::chrono::system_clock;

  /// The old value, where it is another.
  std::string wasText(const Zel::ValueRecord& record, const void* old) const {
    return old == nullptr ? "" : " " + coloured("(was " + textForm(record, old) + ")", Cell::faint);
  }
  std::string valueText(const Zel::ValueRecord& record, const void* value) const {
    const std::string text = textForm(record, value);
    return record.enumeration == nullptr ? text : coloured(text, colourOf(unquoted(text)));
  }
  std::string coloured(const std::string& text, Cell::Colour colour) const {
    return Cell(text, colour).onScreen(screen_);
  }
  static void addOld(json& all, const Zel::ValueRecord& record, const void* old) {
    if (old != nullptr) {
      all["old"] = jsonOf(record, old);
    }
  }

  /// With the time in front, behind what the line begins with.
  void line(const std::string& text, const char* lead = "") {
    lines_ += lead + coloured(Net::timeText(Clock::now()), Cell::faint) + " " + text + "\n";
  }
  void line(json all) {
    all["time"] = std::chrono::duration<double>(Clock::now().time_since_epoch()).count();
    lines_ += lineOf(all) + "\n";
  }

  const std::vector<Scope> scopes_;
  const bool isJson_;
  const Screen screen_ = Screen::ofOutput();
  const std::string added_ = coloured("added", Cell::green);
  const std::string deleted_ = coloured("deleted", Cell::red);
  std::string lines_;
};

/// Watches the mirror of a root over all connections.
class RootWatch : public Mount::Notifiee {
public:
  RootWatch(Teller& teller, bool initial) : teller_(teller), initial_(initial) {}

  void start(const Ptr<Mount>& mount) {
    root_ = "/" + segmentOf(Zel::valueRecord<Zel::Name>, &mount->name());
    mount_ = mount.ptr();
    isRegisteredNotifieeIs(true);
    notifierIs(mount);
    onState();
  }

  void onState() override {
    switch (mount_->state()) {
    case Mount::live:
      teller_.state(root_, wasLive_ ? "live again" : "live", *mount_);
      if (tree_ == nullptr) {
        treeIs();
      }
      wasLive_ = true;
      break;
    case Mount::stale:
      teller_.state(root_, "stale", *mount_);
      break;
    case Mount::refused:
      teller_.state(root_, "refused", *mount_);
      break;
    case Mount::waiting:
    case Mount::resyncing:
      break;
    }
  }
  /// The next server has a root of another type.
  void onEntity() override { tree_ = nullptr; }

protected:
  ~RootWatch() override = default;

private:
  void treeIs() {
    if (initial_) {
      walk(*mount_->entity(), root_ + "/", teller_);
    }
    tree_ = std::make_unique<WatchedTree>(mount_->entity(), root_, teller_);
  }

  Teller& teller_;
  const bool initial_;
  bool wasLive_ = false;
  std::string root_;
  const Mount* mount_ = nullptr; // the notifier, which is held
  std::unique_ptr<WatchedTree> tree_;
};

class Watch : public Command {
public:
  void declare(Parameters& parameters) override {
    parameters.words("PATH", paths_, "What to watch, with all that is below; all without it");
    parameters.flag("initial", initial_, "Print what is there first");
  }

  int run(Context& context) override {
    const Options& options = context.options();
    if (options.socket.empty()) {
      throw Failure(exitUsage, "watch needs a server: nobody else changes a tree of its own");
    }
    RemoteDevice::Settings settings;
    settings.path = options.socket;
    settings.timeout = options.timeout;
    settings.reconnects = true;
    RemoteDevice device(settings);
    bool isStopped = false;
    asio::signal_set signals(device.io(), SIGINT);
    signals.async_wait([&](const asio::error_code& ended, int /*number*/) {
      if (!ended) {
        isStopped = true;
        device.turns().soon();
      }
    });
    device.roots(); // a server that does not say what it has is none
    Teller teller(scopes(device), options.json);
    std::map<Zel::Name, Ptr<RootWatch>> watches;
    device.wait(
        [&] {
          watchOffers(device, teller, watches);
          context.out() << teller.takeLines();
          context.out().flush();
          return isStopped;
        },
        -1);
    throw Failure(exitStopped, "stopped");
  }

private:
  std::vector<Scope> scopes(Device& device) const {
    std::vector<Scope> scopes;
    for (const std::string& path : paths_) {
      scopes.emplace_back(device, path);
    }
    if (scopes.empty()) {
      scopes.emplace_back(device, "/");
    }
    return scopes;
  }

  /// Watches what is offered by now, and not watched yet: a server may get further roots, and the
  /// next one have others.
  void watchOffers(RemoteDevice& device, Teller& teller,
                   std::map<Zel::Name, Ptr<RootWatch>>& watches) const {
    for (const auto& [name, type] : device.offers()) {
      const std::string path = "/" + segmentOf(Zel::valueRecord<Zel::Name>, &name);
      if ((teller.wants(path) || teller.isBehind(path)) &&
          watches.try_emplace(name, nullptr).second) {
        const auto made = Zel::makeObject<RootWatch>(teller, initial_);
        watches[name] = made;
        made->start(device.mounts()->mountIs(name));
        device.turns().soon(); // to ask for it
      }
    }
  }

  std::vector<std::string> paths_;
  bool initial_ = false;
};

} // namespace

CommandEntry watchCommand() {
  return {"watch", "Print each change as it happens, over restarts of the server",
          "  maintctl watch\n"
          "  maintctl watch /status/System /profiles\n"
          "  maintctl --json watch --initial /status | jq .\n"
          "\nEach line has a time, and behind a value the one before it.\n"
          "Lines that begin with # tell when the mirror is stale, and when it is live again.\n"
          "Ctrl-C ends it, with status 130.",
          make<Watch>};
}

} // namespace Maintctl
