#include "CommandList.h"
#include "Scope.h"
#include "Values.h"

#include <nlohmann/json.hpp>

namespace Maintctl {

namespace {

using Zel::Session;

const char* resultName(Session::DigestResult result) {
  switch (result) {
  case Session::digestEqual:
    return "equal";
  case Session::digestDiffers:
    return "differs";
  case Session::digestBusy:
    return "busy";
  case Session::digestUnknown:
    break;
  }
  return "unknown";
}

class Verify : public Command {
public:
  void declare(Parameters& parameters) override {
    parameters.optionalWord("ROOT", root_, "Such as /status; all roots without it");
  }

  int run(Context& context) override {
    Device& device = context.device();
    int status = exitDone;
    nlohmann::json all = nlohmann::json::object();
    for (const Zel::Name& root : roots(device)) {
      const Session::DigestResult result = device.verify(root);
      const std::string segment = segmentOf(Zel::valueRecord<Zel::Name>, &root);
      if (context.options().json) {
        all[segment] = resultName(result);
      } else {
        context.out() << '/' << segment << ": " << resultName(result) << '\n';
      }
      if (result == Session::digestDiffers) {
        status = exitDiffers;
      } else if (result != Session::digestEqual && status == exitDone) {
        status = result == Session::digestBusy ? exitTimeout : exitFailed;
      }
    }
    if (context.options().json) {
      context.out() << lineOf(all) << '\n';
    }
    return status;
  }

private:
  std::vector<Zel::Name> roots(Device& device) const {
    const Scope scope(device, root_);
    if (scope.row() != nullptr) {
      throw Failure(exitUsage, "only whole roots are compared: verify /" +
                                   segmentOf(Zel::valueRecord<Zel::Name>, &scope.root()));
    }
    if (!scope.root().empty()) {
      return {scope.root()};
    }
    std::vector<Zel::Name> all;
    for (const auto& [name, type] : device.roots()) {
      all.push_back(name);
    }
    return all;
  }

  std::string root_ = "/";
};

} // namespace

CommandEntry verifyCommand() {
  return {"verify", "Compare a mirror of the server's state with the original, by digest",
          "  maintctl verify\n"
          "  maintctl verify /status || echo differs",
          make<Verify>};
}

} // namespace Maintctl
