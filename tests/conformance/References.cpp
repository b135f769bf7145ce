#include "GenericSide.h"

#include <Zel/Dir>

namespace Conformance {

namespace {

/// Members of directories, by the text that refers to them.
class Reference : public GenericSide {
protected:
  const Zel::Ptr<Zel::Entity> directory{object.entity};
  const Zel::Ptr<Zel::Dir> roots = Zel::makeObject<Zel::Dir>();
  const Zel::Dir::Active active{roots};
  const std::vector<AnyValue>& keys() const { return samplesOf(*row().key); }

  Zel::Ptr<Zel::PtrInterface> add(const AnyValue& key) {
    std::vector<const void*> arguments;
    for (const Zel::ValueRecord* const record : row().collection->arguments) {
      arguments.push_back(samplesOf(*record)[1].at());
    }
    return row().collection->create(owner(), key.at(), arguments.data());
  }
};

TEST_P(Reference, ToAMemberReadsBackAsTheSameObject) {
  roots->entityIs(directory);
  std::vector<AnyValue> all = keys();
  for (unsigned i = 0; i < 10; ++i) {
    all.push_back(numberedKey(*row().key, i));
  }
  for (const AnyValue& key : all) {
    SCOPED_TRACE(testing::PrintToString(key));
    const auto member = add(key);
    const Generic reference = attr().attrType()->genericIf(member.ptr(), false);
    const Zel::String8 text = reference->strRep();
    SCOPED_TRACE(text);
    EXPECT_EQ(text.view().substr(0, 2), "'/");

    const Generic read = attr().attrType()->genericIf(text, true);

    EXPECT_EQ(read->voidPtrIs(read->type()), member.ptr());
    EXPECT_EQ(read->type().ptr(), attr().attrType());
    EXPECT_TRUE(read->isConst());
    EXPECT_EQ(read->strRep(), text);
  }
}

TEST_P(Reference, ToAMemberThatHasLeftLeadsNowhere) {
  roots->entityIs(directory);
  const auto member = add(keys()[1]);
  const Generic reference = attr().attrType()->genericIf(member.ptr(), false);
  const Zel::String8 text = reference->strRep();
  row().collection->erase(owner(), keys()[1].at());

  EXPECT_EQ(reference->strRep().view(),
            "object(" + std::string(attr().attrType()->fullName().view()) + ")");
  const std::string path(text.view().substr(1, text.view().size() - 2));
  EXPECT_EQ(Support::rangeFailure([&] { attr().attrType()->genericIf(text, true); }),
            "no entity at " + path);
}

TEST_P(Reference, ToTheDirectoryIsItsName) {
  roots->entityIs(directory);
  const Zel::String8 text = generic->strRep();
  EXPECT_EQ(text.view(), std::string("'/").append(directory->name().view()).append("'"));
  EXPECT_EQ(type().genericIf(text, false)->voidPtrIs(generic->type()), object.counted);
  EXPECT_NE(Support::rangeFailure([&] { attr().attrType()->genericIf(text, false); }), "");
}

TEST_P(Reference, IsLostWithoutRoots) {
  const auto member = add(keys()[1]);
  const Generic reference = attr().attrType()->genericIf(member.ptr(), false);
  const std::string name(attr().attrType()->fullName().view());
  EXPECT_EQ(reference->strRep().view(), "object(" + name + ")");
}

INSTANTIATE_TEST_SUITE_P(Attributes, Reference, testing::ValuesIn([] {
                           std::vector<Case> cases = casesOf([](const Zel::AttrRow& row) {
                             return row.kind == Zel::AttrKind::instantiating;
                           });
                           std::erase_if(cases, [](const Case& attribute) {
                             return attribute.subject->table->kind != Zel::TypeKind::entity;
                           });
                           return cases;
                         }()),
                         caseName);

} // namespace

} // namespace Conformance
