#include "Guard.h"

#include <Zel/Exception>

#include <new>

namespace Maintctl {

Failure currentFailure() {
  try {
    throw;
  } catch (const Failure& failure) {
    return failure;
  } catch (const Zel::ReadOnlyException& failure) {
    return {exitRefused, failure.what()};
  } catch (const Zel::ConstException& failure) {
    return {exitRefused, failure.what()};
  } catch (const Zel::RangeException& failure) {
    return {exitBadValue, failure.what()};
  } catch (const std::bad_alloc&) {
    return {exitFailed, "out of memory"};
  } catch (const std::exception& failure) {
    return {exitFailed, failure.what()};
  }
}

} // namespace Maintctl
