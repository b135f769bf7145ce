#include "Change.h"
#include "CommandList.h"

namespace Maintctl {

namespace {

class Del : public Command {
public:
  void declare(Parameters& parameters) override {
    parameters.word("PATH", path_, "Of a member or an entry that is there");
  }

  int run(Context& context) override {
    remove(Tree(context.device()).at(path_, Purpose::change));
    context.device().flush();
    return exitDone;
  }

private:
  std::string path_;
};

} // namespace

CommandEntry delCommand() {
  return {"del", "Take a member or an entry out of a collection",
          "  maintctl del /status/Linecard3\n"
          "  maintctl del /status/System/group/groupTypeBgp,transit",
          make<Del>};
}

} // namespace Maintctl
