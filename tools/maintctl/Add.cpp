#include "Change.h"
#include "CommandList.h"

namespace Maintctl {

namespace {

class Add : public Command {
public:
  void declare(Parameters& parameters) override {
    parameters.word("PATH", path_, "Of what is to be made: a collection's, and its key");
    parameters.words(
        "ARG", arguments_,
        "The value of an entry, if it is not to be true; what else a member is made of");
    parameters.flag("may-exist", mayExist_, "Leave it as it is if it is there already");
  }

  int run(Context& context) override {
    Device& device = context.device();
    add(device, Tree(device).at(path_, Purpose::add), arguments_, mayExist_);
    device.flush();
    return exitDone;
  }

private:
  std::string path_;
  std::vector<std::string> arguments_;
  bool mayExist_ = false;
};

} // namespace

CommandEntry addCommand() {
  return {"add", "Make a member or an entry of a collection",
          "  maintctl add /status/Linecard3\n"
          "  maintctl add --may-exist /status/Linecard3\n"
          "  maintctl add /status/Linecard3/group/groupTypeBgp,transit\n"
          "  maintctl add /status/Linecard3/history/12.5 \"drain begun\"\n"
          "  maintctl add /mergedInput/Linecard3 srcCli",
          make<Add>};
}

} // namespace Maintctl
