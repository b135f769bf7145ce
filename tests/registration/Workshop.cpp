#include "Workshop.h"

#include <Zel/Attribute>
#include <generic/Reactor.h>
#include <generic/TypeOf.h>

namespace Workshop {

namespace {

constexpr Zel::AttrRow plankRows[] = {
    Zel::Rows<Plank>::valueMember<&Plank::wood, &Plank::woodIs>(2, "wood"),
};
constexpr Zel::TypeTable plankTable = Zel::tableOf<Plank>(plankRows);

constexpr Zel::AttrRow benchRows[] = {Zel::Rows<Bench>::constant<&Bench::legs>(258, "legs")};
constexpr Zel::TypeTable benchTable = Zel::tableOf<Bench, Zel::Name>(benchRows);

constexpr std::string_view materialScopes[] = {"Workshop"};
constinit Zel::ModuleOf<Zel::TypeList<Wood, Plank>> materialModule(materialScopes);

constexpr std::string_view toolScopes[] = {"Workshop", "Tools"};
constinit Zel::ModuleOf<Zel::TypeList<Bench>> toolModule(toolScopes);

} // namespace

const Zel::ZelType* _fwkType_Wood() { return materialModule.fwkType<Wood>(); }
const Zel::ZelType* Plank::_fwkType() { return materialModule.fwkType<Plank>(); }
const Zel::ZelType* Bench::_fwkType() { return toolModule.fwkType<Bench>(); }

const Zel::TypeTable& Plank::zelTable() { return plankTable; }
const Zel::TypeTable& Bench::zelTable() { return benchTable; }

Bench::~Bench() = default;
void Bench::zeroReferencesIs(bool /*zero*/) { Zel::notifyZeroReferences(*this); }

class Bench::GenericIf_ : public Zel::EntityGenericIf<Bench> {
public:
  class GenericIf_Adapter_ : public Zel::GenericAdapter<Bench, GenericIf_> {
  public:
    using GenericAdapter::GenericAdapter;
  };
  GenericIf_(const Zel::Ptr<Bench>& object, bool isConst) : EntityGenericIf(isConst) {
    zelAttach(this, object);
  }
};

Zel::Module& materials() { return materialModule; }
Zel::Module& tools() { return toolModule; }

} // namespace Workshop

template class Zel::TypeOf<Workshop::Wood>;
template class Zel::TypeOf<Workshop::Plank>;
template class Zel::TypeOf<Workshop::Bench>;
