#include "Run.h"

#include <Change.h>
#include <Dump.h>
#include <Failure.h>
#include <Load.h>

#include <Zel/StateDigest>
#include <Zel/ZelType>
#include <foreign/model/Carrier.h>
#include <foreign/model/Depot.h>
#include <foreign/model/Order.h>
#include <foreign/model/Perishable.h>
#include <foreign/model/Rack.h>

namespace Maintctl::Test {

namespace {

/// The commands know no type: a tree of another model, with the kinds of attributes that the roots
/// of the program do not have.
class ForeignDevice : public Device {
public:
  ForeignDevice() {
    dir_->entityIs(Zel::makeObject<Foreign::Rack>("rack"));
    dir_->entityIs(Zel::makeObject<Foreign::Carrier>("carrier"));
    dir_->entityIs(Zel::makeObject<Foreign::Depot>("depot"));
    dir_->entityIs(Zel::makeObject<Foreign::OrderDir>("orders"));
    dir_->entityIs(Zel::makeObject<Foreign::PerishableDir>("perishables"));
  }

  const Zel::Ptr<Zel::Dir>& dir() const override { return dir_; }
  std::map<Zel::Name, Zel::String8> roots() override {
    std::map<Zel::Name, Zel::String8> all;
    for (const auto& [name, root] : dir_->entities()) {
      all.emplace(name, root->fwkType()->fullName());
    }
    return all;
  }
  void need(const Zel::Name& /*root*/, bool toWrite) override { writes_ += toWrite ? 1 : 0; }
  void flush() override { ++flushes; }
  bool wait(const std::function<bool()>& isDone, double /*seconds*/) override { return isDone(); }
  Zel::Session::DigestResult verify(const Zel::Name& /*root*/) override {
    return Zel::Session::digestUnknown;
  }

  std::string text() {
    std::ostringstream out;
    dump(*this, out);
    return out.str();
  }
  std::size_t take(const std::string& lines) {
    std::istringstream in(lines);
    return load(*this, in, "lines");
  }
  /// The message of a load that fails.
  std::string refusal(const std::string& lines) {
    try {
      take(lines);
    } catch (const Failure& failure) {
      return failure.what();
    }
    return "none";
  }
  std::map<std::string, std::uint64_t> digests() const {
    std::map<std::string, std::uint64_t> all;
    for (const auto& [name, root] : dir_->entities()) {
      all[name.charPtr()] = Zel::stateDigest(*root);
    }
    return all;
  }

  int flushes = 0;

private:
  const Zel::Ptr<Zel::Dir> dir_ = Zel::makeObject<Zel::Dir>();
  int writes_ = 0;
};

constexpr const char* lines = "/orders/o1 'pressing'\n";

TEST(ForeignTree, IsDumpedAndLoadedBack) {
  ForeignDevice device;
  std::cout << device.text();
  EXPECT_EQ(device.refusal(lines), "");
}

} // namespace

} // namespace Maintctl::Test
