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
  void need(const Zel::Name& /*root*/, bool /*toWrite*/) override {}
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
};

/// Every kind of value, key and member, in the form of a dump.
constexpr const char* everything =
    "# The tree of a device: members by their paths, and values behind theirs.\n"
    "\n"
    "# /carrier, Foreign::Carrier\n"
    "/carrier/load/frozen,ice%20cream true\n"
    "/carrier/target/hazardous Value('Foreign::SlotCode', ** {'aisle': 'a%,', 'shelf': 3})\n"
    "/carrier/urgency 'express'\n"
    "/carrier/idle false\n"
    "\n"
    "# /depot, Foreign::Depot\n"
    "/depot/alarm/door Value('Foreign::Alarm', ** {'sensor': 'door', 'urgency': 'routine'})\n"
    "/depot/pid 7\n"
    "/depot/restarts 2\n"
    "/depot/open true\n"
    "\n"
    "# /orders, Foreign::OrderDir\n"
    "/orders/order/o%2F1 'express'\n"
    "/orders/order/o%2F1/urgency 'express'\n"
    "/orders/order/o%2F1/item/nails 100\n"
    "\n"
    "# /perishables, Foreign::PerishableDir\n"
    "/perishables/perishable/milk\n"
    "/perishables/perishable/milk/supplier/farm true\n"
    "/perishables/perishable/milk/batch/b%231 12\n"
    "\n"
    "# /rack, Foreign::Rack\n"
    "/rack/zone 'chilled'\n";

/// The lines of a text that are not in another.
std::string without(const std::string& text, const std::string& other) {
  std::istringstream in(text);
  std::string left;
  for (std::string line; std::getline(in, line);) {
    if ((other + "\n").find(line + "\n") == std::string::npos) {
      left += line + "\n";
    }
  }
  return left;
}

TEST(ForeignTree, IsLoadedAndDumpedWithAllKindsOfMembers) {
  ForeignDevice device;
  EXPECT_EQ(device.take(everything), 15U);
  EXPECT_EQ(device.flushes, 1);
  const std::string dumped = device.text();
  EXPECT_EQ(without(everything, dumped), "") << dumped;
  ForeignDevice other;
  other.take(dumped);
  EXPECT_EQ(other.text(), dumped);
  EXPECT_EQ(other.digests(), device.digests());
  EXPECT_NE(other.digests(), ForeignDevice().digests());
}

TEST(ForeignTree, TakesCreationArgumentsOverWhereTheMemberIsThere) {
  ForeignDevice device;
  device.take("/orders/o1 routine\n/orders/o1 express\n");
  EXPECT_NE(device.text().find("/orders/order/o1/urgency 'express'\n"), std::string::npos);
  EXPECT_EQ(device.refusal("/orders/o2\n"),
            "lines:1: /orders/order/o2 takes 1 argument behind its path, got 0 arguments; nothing "
            "was loaded");
  EXPECT_EQ(
      device.refusal("/orders/o2 soon\n"),
      "lines:1: bad value soon for /orders/order/o2, it is one of urgencyUnknown, routine and "
      "express; nothing was loaded");
}

TEST(ForeignTree, HoldsValuesToTheKeyThatTheyBring) {
  ForeignDevice device;
  device.take("/depot/alarm gate,routine\n");
  EXPECT_NE(device.text().find("/depot/alarm/gate Value("), std::string::npos);
  EXPECT_EQ(device.refusal("/depot/alarm/door gate,routine\n"),
            "lines:1: bad value gate,routine for /depot/alarm/door: its key is gate; nothing was "
            "loaded");
  Tree tree(device);
  add(device, tree.at("/depot/alarm", Purpose::add), {"door,express"}, false);
  setValue(tree.at("/depot/alarm/gate", Purpose::change), "gate,express");
  remove(tree.at("/depot/alarm/door", Purpose::change));
  EXPECT_NE(device.text().find("/depot/alarm/gate Value('Foreign::Alarm', ** {'sensor': 'gate', "
                               "'urgency': 'express'})\n"),
            std::string::npos);
  EXPECT_EQ(device.text().find("/depot/alarm/door"), std::string::npos);
}

} // namespace

} // namespace Maintctl::Test
