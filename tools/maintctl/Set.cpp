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
    parameters.option("if", "OLD", old_, "Only if this is the value, which the server decides");
  }

  int run(Context& context) override {
    Device& device = context.device();
    const Target target = Tree(device).at(path_, Purpose::change);
    if (old_) {
      setValueIf(device, target, *old_, value_);
    } else {
      setValue(target, value_);
      device.flush();
    }
    return exitDone;
  }

private:
  std::string path_;
  std::string value_;
  std::optional<std::string> old_;
};

} // namespace

CommandEntry setCommand() {
  return {"set", "Change a value",
          "  maintctl set /status/System/state underMaintenance\n"
          "  maintctl set --if active /status/System/state maintenanceModeEnter || echo too late\n"
          "  maintctl set /status/System/aggTrafficRate 1000,2000,12.5\n"
          "  maintctl set /defaultProfile/profileName \"'drain slowly'\"",
          make<Set>};
}

} // namespace Maintctl
