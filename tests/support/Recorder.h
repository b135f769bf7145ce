#pragma once

#include <Zel/StreamAdapter>
#include <attrlog/AdapterOf.h>
#include <model/Profile/DefaultProfile.h>

#include <functional>
#include <string>
#include <vector>

namespace Support {

/// What notifiees heard, in the order in which they heard it.
using Log = std::vector<std::string>;

/// A notifiee of a `DefaultProfile` that writes down what it hears.
class Recorder : public Maintenance::Profile::DefaultProfile::Notifiee {
public:
  Recorder(std::string label, Log& log) : label_(std::move(label)), log_(log) {}

  void onProfileName() override {
    log_.push_back(label_);
    if (const auto call = onCall) { // a copy: the call may replace it
      call();
    }
  }
  void onZeroReferences() override { log_.push_back(label_ + " zero"); }
  void onNotificationException(Zel::AttributeId id) override {
    log_.push_back(label_ + " exception " + std::to_string(id));
    if (onException) {
      onException();
    }
  }

  std::function<void()> onCall;
  std::function<void()> onException;

protected:
  ~Recorder() override { log_.push_back(label_ + " gone"); }

private:
  const std::string label_;
  Log& log_;
};

/// A registered notifiee.
inline Zel::Ptr<Recorder> listen(const Zel::Ptr<Maintenance::Profile::DefaultProfile>& to,
                                 std::string label, Log& log) {
  auto recorder = Zel::makeObject<Recorder>(std::move(label), log);
  recorder->isRegisteredNotifieeIs(true);
  recorder->notifierIs(to);
  return recorder;
}

/// A stand-in for a stream adapter.
class Mirror : public Zel::Entity::ZelNboAttrLogSa {
public:
  Mirror()
      : ZelNboAttrLogSa(Zel::planOf<Maintenance::Profile::DefaultProfile>(), {}, 1, nullptr,
                        nullptr) {}
};

/// A notifiee that reacts for a stream adapter.
class MirrorRecorder : public Recorder {
public:
  using Recorder::Recorder;
  Zel::Ptr<Zel::PtrInterface::NotifieeConst> zelReactor() const override { return mirror_; }

private:
  Zel::Ptr<Mirror> mirror_ = Zel::makeObject<Mirror>();
};

inline Zel::Ptr<Recorder> mirror(const Zel::Ptr<Maintenance::Profile::DefaultProfile>& from,
                                 std::string label, Log& log) {
  Zel::Ptr<Recorder> recorder = Zel::makeObject<MirrorRecorder>(std::move(label), log);
  recorder->isRegisteredNotifieeIs(true);
  recorder->notifierIs(from);
  return recorder;
}

} // namespace Support
