#include "Ends.h"

#include "foreign/model/RackAttrLog.h"

#include <Zel/NboAttrLogFlow>
#include <attrlog/Profile.h>
#include <attrlog/Unit.h>

#include <gtest/gtest.h>

// What flows keep on the heap: bookmarks of walks, positions in texts, keys.

namespace {

using namespace Maintenance::Unit;
using Zel::Ptr;
using Zel::String8;
using Position = String8::IteratorConst;
using Text = String8::Iterator;
using FlowOut = Zel::NboAttrLog::FlowOut;
using FlowIn = Zel::NboAttrLog::FlowIn;

class FlowState : public ::testing::Test {
protected:
  const Ptr<Zel::NboAttrLog::Out> out = Zel::makeObject<Zel::NboAttrLog::Out>(65536U);
  const Ptr<Status> unit = statusFactory("u");
  const Ptr<Zel::Entity::ZelNboAttrLogSa> adapter = unit->zelNboAttrLogSaIs({}, 1, out, nullptr);
  const Ptr<FlowOut> flowOut = adapter->flowOutIs(out, {}, false, 0x7fffffff);
  const Ptr<FlowIn> flowIn = Zel::makeObject<FlowIn>(Zel::EntityId{2, 0});
};

using FlowStateDeathTest = FlowState;

template <class K>
void expectBookmark(const Ptr<FlowOut>& flowOut, const K& key) {
  EXPECT_EQ(zelFlowOutBookmarkDeq<K>(flowOut), K());
  zelFlowOutBookmarkEnq(flowOut, key);
  EXPECT_NE(flowOut->bookmark(), nullptr);
  EXPECT_EQ(zelFlowOutBookmarkDeq<K>(flowOut), key);
  EXPECT_EQ(flowOut->bookmark(), nullptr);
}

TEST_F(FlowState, ABookmarkIsTakenOutOnce) {
  using namespace Maintenance::Profile;
  expectBookmark(flowOut, Zel::Name("n"));
  expectBookmark(flowOut, String8("s"));
  expectBookmark(flowOut, Group::GroupKey(Group::groupTypeBgp, "g"));
  expectBookmark(flowOut, Vexil::IntfId(1, 2));
  expectBookmark(flowOut, ProfileKey(profileTypeUnit, "p"));
  expectBookmark(flowOut, profileTypeUnit);
  expectBookmark(flowOut, 2.5);
}

TEST_F(FlowState, APositionKeepsItsText) {
  EXPECT_EQ(zelFlowOutValueDeq<Position>(flowOut).position(), 0);
  {
    const String8 text("abcdef");
    zelFlowOutValueEnq(flowOut, Position(text, 4));
  }
  EXPECT_TRUE(flowOut->hasDirtyAttributes());
  const auto at = zelFlowOutValueDeq<Position>(flowOut);
  EXPECT_EQ(at.position(), 4);
  EXPECT_EQ(at.rest(), "ef");
  EXPECT_EQ(flowOut->valueIter(), nullptr);
  EXPECT_FALSE(flowOut->hasDirtyAttributes());
}

TEST_F(FlowState, ATextIsPutTogetherInOnePlace) {
  EXPECT_EQ(zelFlowInIterator<Text>(flowIn.ptr(), 261, true), nullptr);
  Text* const text = zelFlowInIterator<Text>(flowIn.ptr(), 261, false);
  ASSERT_NE(text, nullptr);
  EXPECT_EQ(flowIn->aid(), 261);
  EXPECT_EQ(String8(*text), "");
  EXPECT_EQ(text->position(), 0);
  text->append("ab");
  EXPECT_EQ(zelFlowInIterator<Text>(flowIn.ptr(), 261, false), text);
  EXPECT_EQ(zelFlowInIterator<Text>(flowIn.ptr(), 261, true), text);
  zelFlowInIteratorDel<Text>(flowIn.ptr(), 261);
  EXPECT_EQ(flowIn->iter(), nullptr);
  EXPECT_EQ(flowIn->aid(), 0);
  zelFlowInIteratorDel<Text>(flowIn.ptr(), 261);
  EXPECT_EQ(flowIn->iter(), nullptr);
}

TEST_F(FlowState, ATextThatWasBegunIsKeptAsACopy) {
  Text text;
  text.append("ab");
  zelFlowInIteratorIs(flowIn.ptr(), 268, text);
  text.append("cd");
  EXPECT_EQ(flowIn->aid(), 268);
  EXPECT_EQ(String8(*zelFlowInIterator<Text>(flowIn.ptr(), 268, true)), "ab");
  EXPECT_EQ(String8(text), "abcd");
}

TEST_F(FlowState, AKeyOfATextIsTakenOutOnce) {
  EXPECT_EQ(zelFlowInIdxDeq<double>(flowIn), 0.0);
  zelFlowInIdxEnq(flowIn, 2.5);
  EXPECT_EQ(*static_cast<double*>(flowIn->idx()), 2.5);
  EXPECT_EQ(zelFlowInIdxDeq<double>(flowIn), 2.5);
  EXPECT_EQ(flowIn->idx(), nullptr);
}

// Freed with the flow, which a checker of leaks sees.
TEST_F(FlowState, WhatIsLeftInAFlowGoesWithIt) {
  zelFlowInIdxEnq(flowIn, String8("key"));
  zelFlowInIterator<Text>(flowIn.ptr(), 268, false)->append(std::string(100, 'a'));
  EXPECT_NE(flowIn->iter(), nullptr);
}

TEST_F(FlowState, GivenUpInACollectionTheBookmarkGoes) {
  zelFlowOutBookmarkEnq(flowOut, Group::GroupKey(Group::groupTypeBgp, "a"));
  flowOut->attrIdIs(260);
  adapter->freeResyncState(flowOut);
  EXPECT_EQ(flowOut->bookmark(), nullptr);
  zelFlowOutBookmarkEnq(flowOut, Vexil::IntfId(1, 2));
  flowOut->attrIdIs(272);
  adapter->freeResyncState(flowOut);
  EXPECT_EQ(flowOut->bookmark(), nullptr);
  adapter->freeResyncState(flowOut);
  EXPECT_EQ(flowOut->bookmark(), nullptr);
}

TEST_F(FlowState, GivenUpInATextThePositionGoes) {
  for (const int attr : {261, 269, 270}) {
    zelFlowOutValueEnq(flowOut, Position(String8("abc"), 1));
    flowOut->attrIdIs(attr);
    adapter->freeResyncState(flowOut);
    EXPECT_EQ(flowOut->valueIter(), nullptr);
  }
}

TEST_F(FlowState, GivenUpInTheHistoryAllThreeGo) {
  zelFlowOutBookmarkEnq(flowOut, 1.0);
  zelFlowOutValueEnq(flowOut, Position(String8("abc"), 1));
  zelFlowOutValueKeyEnq(flowOut, 2.0);
  flowOut->attrIdIs(268);
  adapter->freeResyncState(flowOut);
  EXPECT_EQ(flowOut->bookmark(), nullptr);
  EXPECT_EQ(flowOut->valueIter(), nullptr);
  EXPECT_EQ(flowOut->valueIterKey(), nullptr);
}

TEST_F(FlowState, GivenUpElsewhereNothingGoes) {
  zelFlowOutBookmarkEnq(flowOut, 1.0);
  zelFlowOutValueEnq(flowOut, Position(String8("abc"), 1));
  for (const int attr : {0, 135, 258, 259, 262, 267, 274, 275, -268}) {
    flowOut->attrIdIs(attr);
    adapter->freeResyncState(flowOut);
    EXPECT_NE(flowOut->bookmark(), nullptr) << attr;
    EXPECT_NE(flowOut->valueIter(), nullptr) << attr;
  }
  zelFlowOutBookmarkDeq<double>(flowOut);
  zelFlowOutValueDeq<Position>(flowOut);
}

TEST_F(FlowState, GivenUpInTextsOfAHashCollectionAllThreeGo) {
  const auto rack = Zel::makeObject<Foreign::Rack>("r");
  const auto own = rack->zelNboAttrLogSaIs({}, 1, out, nullptr);
  const Ptr<FlowOut> flow = own->flowOutIs(out, {}, false, 0x7fffffff);
  zelFlowOutBookmarkEnq(flow, Zel::Name("b"));
  zelFlowOutValueEnq(flow, Position(String8("abc"), 1));
  zelFlowOutValueKeyEnq(flow, Zel::Name("k"));
  flow->attrIdIs(262);
  own->freeResyncState(flow);
  EXPECT_EQ(flow->bookmark(), nullptr);
  EXPECT_EQ(flow->valueIter(), nullptr);
  EXPECT_EQ(flow->valueIterKey(), nullptr);
}

TEST_F(FlowStateDeathTest, OnlyOneBookmarkIsKept) {
  zelFlowOutBookmarkEnq(flowOut, 1.0);
  EXPECT_DEATH(zelFlowOutBookmarkEnq(flowOut, 2.0),
               "Zel/NboAttrLogFlow:[0-9]+: assertion \"!rsc->bookmark\\(\\)\" failed");
  zelFlowOutBookmarkDeq<double>(flowOut);
}

TEST_F(FlowStateDeathTest, OnlyOnePositionIsKept) {
  zelFlowOutValueEnq(flowOut, Position());
  EXPECT_DEATH(zelFlowOutValueEnq(flowOut, Position()),
               "Zel/NboAttrLogFlow:[0-9]+: assertion \"!rsc->valueIter\\(\\)\" failed");
  zelFlowOutValueDeq<Position>(flowOut);
}

TEST_F(FlowStateDeathTest, OnlyOneKeyOfATextIsKept) {
  zelFlowOutValueKeyEnq(flowOut, 1.0);
  EXPECT_DEATH(zelFlowOutValueKeyEnq(flowOut, 2.0),
               "Zel/NboAttrLogFlow:[0-9]+: assertion \"!rsc->valueIterKey\\(\\)\" failed");
  flowOut->attrIdIs(268);
  adapter->freeResyncState(flowOut);
}

TEST_F(FlowStateDeathTest, OnlyOneTextIsPutTogether) {
  zelFlowInIteratorIs(flowIn.ptr(), 261, Text());
  EXPECT_DEATH(zelFlowInIteratorIs(flowIn.ptr(), 261, Text()),
               "Zel/NboAttrLogFlow:[0-9]+: assertion \"!rrc->iter\\(\\)\" failed");
}

TEST_F(FlowStateDeathTest, OnlyOneKeyIsReceived) {
  zelFlowInIdxEnq(flowIn, 1.0);
  EXPECT_DEATH(zelFlowInIdxEnq(flowIn, 2.0),
               "Zel/NboAttrLogFlow:[0-9]+: assertion \"!rsc->idx\\(\\)\" failed");
}

} // namespace
