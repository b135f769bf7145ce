#pragma once

#include <Zel/Ptr>

#include <functional>

namespace TestZel {

/// A counted object that tells of its end.
class Object : public Zel::PtrInterface {
public:
  struct Told {
    int zero = 0;
    int destroyed = 0;
  };

  explicit Object(Told& told) : told_(told) {}

  void zeroReferencesIs(bool zero) override {
    lastArgument = zero;
    ++told_.zero;
    if (onZero) {
      onZero();
    }
  }

  /// Sets bits of the reference word through the operations that exist for it.
  void guardIs(bool guarded) {
    if (guarded) {
      referenceBitsSet(guardBit);
    } else {
      referenceBitsClear(guardBit);
    }
  }

  std::function<void()> onZero;
  std::function<void()> onDestruction;
  bool lastArgument = false;

protected:
  ~Object() override {
    ++told_.destroyed;
    if (onDestruction) {
      onDestruction();
    }
  }

private:
  Told& told_;
};

} // namespace TestZel
