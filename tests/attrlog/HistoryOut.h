#pragma once

#include "Log.h"

#include <gtest/gtest.h>

namespace Wiretap {

inline String8 text(std::size_t length, char of = 'x') { return String8(std::string(length, of)); }

/// Entries whose value is a text, at the sending end.
struct HistoryOut : testing::Test {
  using Attr = Maintenance::Unit::Status::Attr;
  using Position = String8::IteratorConst;

  auto flow() const { return writer.adapter->flowOut(); }
  std::size_t dirty() const { return flow()->zelIsHistoryDirtyMap().count(); }
  bool isSynced() const { return (flow()->zelDirtyBitSet0().word() & 0x200) != 0; }
  double keyUnderWay() const { return *static_cast<double*>(flow()->valueIterKey()); }
  int place() const { return static_cast<Position*>(flow()->valueIter())->position(); }
  /// A `FlowOut` that owes nothing.
  void flowIs() {
    writer.connection->demuxer()->createFlowOut(writer.adapter, {}, false, Zel::attrIdFlowEnd);
  }
  static std::string textOf(const std::vector<Seen>& seen) {
    std::string result;
    for (const Seen& one : seen) {
      result += one.attr == Attr::history ? one.payload.substr(12) : "";
    }
    return result;
  }

  Writer<Maintenance::Unit::Status> writer{Maintenance::Unit::statusFactory("System")};
  const Ptr<Maintenance::Unit::Status> unit = writer.entity;
};

} // namespace Wiretap
