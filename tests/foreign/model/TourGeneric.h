#pragma once

#include "PickPlan.h"

#include <generic/Object.h>

/// The generic objects of tours and what belongs to them.
namespace Foreign {

class Stop::GenericIf_ : public Zel::ObjectGenericIf<Stop> {
public:
  using ObjectGenericIf::ObjectGenericIf;

protected:
  ~GenericIf_() override;
};

class Mark::GenericIf_ : public Zel::ObjectGenericIf<Mark> {
public:
  using ObjectGenericIf::ObjectGenericIf;

protected:
  ~GenericIf_() override;
};

class Tour::GenericIf_ : public Zel::ObjectGenericIf<Tour> {
public:
  using ObjectGenericIf::ObjectGenericIf;

protected:
  ~GenericIf_() override;
};

class PickPlan::GenericIf_ : public Zel::ObjectGenericIf<PickPlan> {
public:
  using ObjectGenericIf::ObjectGenericIf;

protected:
  ~GenericIf_() override;
};

class PickSet::GenericIf_ : public Zel::ObjectGenericIf<PickSet> {
public:
  using ObjectGenericIf::ObjectGenericIf;

protected:
  ~GenericIf_() override;
};

} // namespace Foreign
