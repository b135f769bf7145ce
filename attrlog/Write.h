#pragma once

#include <Zel/Connection>
#include <Zel/Exception>
#include <attrlog/Adapter.h>

namespace Zel {

/// What has to be free, beside a record of an entry, for a text to be begun outside of the
/// schedule: a good deal more than one message, so that a text that is begun has a way to go. No
/// ring is smaller.
inline constexpr std::size_t textBeginSpace = ConnectionLimits::smallestRing;

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
