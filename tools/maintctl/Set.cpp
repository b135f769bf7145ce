#include "Change.h"
#include "CommandList.h"

namespace Maintctl {

namespace {

class Set : public Command {
public:
  void declare(Parameters& parameters) override {
    parameters.word("PATH", path_, "Of an attribute, or of an entry that is there");
    parameters.word("VALUE", value_,
                    "In its text form, whose quotes may be left out: active for 'active'");
  }

  int run(Context& context) override {
    setValue(Tree(context.device()).at(path_, Purpose::change), value_);
    context.device().flush();
    return exitDone;
  }

private:
  std::string path_;
  std::string value_;
};

} // namespace

CommandEntry setCommand() {
  return {"set", "Change a value",
          "  maintctl set /status/System/state underMaintenance\n"
          "  maintctl set /status/System/aggTrafficRate 1000,2000,12.5\n"
          "  maintctl set /defaultProfile/profileName \"'drain slowly'\"",
          make<Set>};
}

} // namespace Maintctl
