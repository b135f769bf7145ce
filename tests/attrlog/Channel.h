#pragma once

#include "Ends.h"

#include <gtest/gtest.h>

/// A root whose records one end writes and another reads, each held against bytes on its way.
template <class T>
class Channel {
public:
  explicit Channel(Zel::Ptr<T> root) : original(std::move(root)) {
    sender.demuxer().exportIs(original);
    receiver.apply(sender.written());
    const Zel::Ptr<Zel::Entity> found = receiver.roots->entity(original->name());
    mirror = Zel::ptrCast<T>(found);
  }

  /// What has been written since the last call is this, and the reader takes it.
  void expectWritten(std::string_view hex) const {
    const std::string written = sender.written();
    EXPECT_EQ(written, plain(hex));
    receiver.apply(written);
    EXPECT_EQ(receiver.failure(), "");
    EXPECT_EQ(receiver.counts().badValues + receiver.counts().refused, 0U);
  }

  const Sender sender;
  const Receiver receiver;
  const Zel::Ptr<T> original;
  Zel::Ptr<T> mirror;
};
