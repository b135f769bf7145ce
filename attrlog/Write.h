#pragma once

#include <Zel/Exception>
#include <attrlog/Adapter.h>

namespace Zel {

/// Writes one record, with what `payload` writes. What cannot be sent takes the connection down and
/// does not disturb the mutator that it comes from.
template <class Payload>
void AttrLogAdapter::write(const FlowStep& step, const NboAttrLog::MsgHeader& header,
                           Payload&& payload) {
  NboAttrLog::Out& out = *nboAttrLogOut();
  try {
    out.nextHeaderIs(header);
    out.tokenIs(NboAttrLog::transactBegin);
    payload(out);
    out.tokenIs(NboAttrLog::transactEnd);
  } catch (const RangeException& failure) {
    recordFailed(step, failure.message());
  }
}

} // namespace Zel
