#pragma once

#include <Zel/Exception>

#include <gtest/gtest.h>

#include <string>
#include <typeinfo>

namespace Support {

/// The message of the failure of exactly type `Failure` that `work` throws; a test failure if it
/// throws nothing, or anything else.
template <class Failure, class Work>
std::string messageOf(Work&& work) {
  try {
    work();
  } catch (const Zel::Exception& failure) {
    EXPECT_EQ(typeid(failure), typeid(Failure)) << failure.what();
    return std::string(failure.message().view());
  }
  ADD_FAILURE() << "nothing was thrown";
  return "nothing was thrown";
}

template <class Work>
std::string rangeFailure(Work&& work) {
  return messageOf<Zel::RangeException>(std::forward<Work>(work));
}

} // namespace Support
