#include "Change.h"
#include "CommandList.h"
#include "Scope.h"

namespace Maintctl {

namespace {

class Del : public Command {
public:
  void declare(Parameters& parameters) override {
    parameters.word("PATH", path_, "Of a member or an entry that is there");
    parameters.flag("if-exists", ifExists_, "Do nothing if it is not there");
  }

  int run(Context& context) override {
    Device& device = context.device();
    if (ifExists_) {
      removeIfThere(device);
    } else {
      remove(Tree(device).at(path_, Purpose::change));
    }
    device.flush();
    return exitDone;
  }

private:
  void removeIfThere(Device& device) const {
    const Scope scope(device, path_); // what cannot be there is misspelt
    try {
      remove(Tree(device).at(path_, Purpose::change));
    } catch (const Failure& failure) {
      if (failure.code() != exitNotFound) {
        throw;
      }
    }
  }

  std::string path_;
  bool ifExists_ = false;
};

} // namespace

CommandEntry delCommand() {
  return {"del", "Take a member or an entry out of a collection",
          "  maintctl del /status/Linecard3\n"
          "  maintctl del --if-exists /status/Linecard3\n"
          "  maintctl del /status/System/group/groupTypeBgp,transit",
          make<Del>};
}

} // namespace Maintctl
