#include "Reference.h"

#include <registration/Flags.h>

#include <iomanip>
#include <ostream>
#include <sstream>
#include <string>

namespace {

namespace Flag = Zel::AttrFlag;
using Zel::FlagWords;
using Zel::ZelAttr;
using Zel::ZelType;

std::string kindOf(const ZelType& type) {
  if (type.isEnumType()) {
    return "enumeration";
  }
  if (type.isValue()) {
    return "value";
  }
  if (type.isEntity()) {
    return "entity";
  }
  return type.hasGenericIfSupport() ? "object" : "class of the framework";
}

std::string words(FlagWords flags) {
  std::ostringstream out;
  out << std::hex << "0x" << flags.first << " 0x" << flags.second;
  return out.str();
}

std::string kindOf(const ZelAttr& attr) {
  const FlagWords flags = attr.flags();
  if ((attr.introspectionFlags() & Zel::ofFramework) != 0) {
    return "framework";
  }
  if ((flags.second & Flag::enumerator) != 0) {
    return "enumerator";
  }
  if ((flags.first & Flag::collection) != 0) {
    const std::string kind =
        (flags.first & Flag::instantiating) != 0 ? "collection of members" : "collection";
    return attr.keyAttrName().empty() ? kind : kind + " by `" + attr.keyAttrName().charPtr() + "`";
  }
  if ((flags.second & Flag::constantOfType) != 0) {
    return "constant";
  }
  if ((flags.first & Flag::hasMutator) == 0) {
    return (flags.first & Flag::constructorArgument) != 0 ? "key" : "computed";
  }
  return (flags.first & Flag::constructorArgument) != 0 ? "singular, constructor argument"
                                                        : "singular";
}

/// A name in code type; nothing for null.
std::string codeName(const ZelType* type) {
  return type != nullptr ? std::string("`") + type->fullName().charPtr() + "`" : "";
}

std::string remarks(const ZelAttr& attr) {
  std::string text;
  const auto remark = [&](bool holds, const char* what) {
    if (holds) {
      text += (text.empty() ? "" : ", ") + std::string(what);
    }
  };
  remark((attr.flags().second & Flag::inAttributeLog) != 0, "logged");
  remark((attr.flags().first & Flag::virtualAccess) != 0, "virtual");
  remark(attr.row() != nullptr && attr.row()->increment != nullptr, "counter");
  return text;
}

void printArguments(std::ostream& out, const ZelType& type) {
  const auto& names = type.constructorArgNameQ();
  for (std::size_t at = 0; at < names.size(); ++at) {
    out << (at == 0 ? "Made from " : ", ") << '`' << names[at] << "` (`"
        << type.constructorArgTypeQ()[at] << "`)";
  }
  const bool anybody = type.table() == nullptr || type.table()->hasFactory;
  out << (anybody ? "" : ", by a directory or the attribute log alone");
  out << (names.empty() ? "" : ".\n");
}

void printDerived(std::ostream& out, const ZelType& type) {
  const char* lead = "Derived from it: ";
  for (const auto& derived : type.derivedTypeQ()) {
    out << lead << codeName(derived.ptr());
    lead = ", ";
  }
  out << (type.derivedTypeQ().empty() ? "" : ".\n");
}

} // namespace

void printType(std::ostream& out, const ZelType& type) {
  out << "## " << type.fullName() << "\n\n" << kindOf(type);
  if (type.base() != nullptr) {
    out << ", derived from " << codeName(type.base());
  }
  out << ", of " << type.size() << " bytes. Flags `" << words(type.flags()) << "`.\n";
  printArguments(out, type);
  printDerived(out, type);
  if (type.attributeQ().empty()) {
    out << "No attributes.\n\n";
    return;
  }
  out << "\n| id | attribute | kind | type | key | flags | remarks |\n"
         "|---:|---|---|---|---|---|---|\n";
  for (const auto& attr : type.attributeQ()) {
    out << "| " << attr->id() << " | `" << attr->name() << "` | " << kindOf(*attr) << " | "
        << codeName(attr->attrType()) << " | " << codeName(attr->indexType()) << " | `"
        << words(attr->flags()) << ' ' << attr->introspectionFlags() << "` | " << remarks(*attr)
        << " |\n";
  }
  out << '\n';
}
