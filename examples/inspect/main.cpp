/// Prints what a program can learn at run time of the types that it has: their reference in
/// Markdown, or the names that a library file offers.

#include "Reference.h"
#include "TypeSection.h"

#include <Zel/IntrospectionReactor>

#include <CLI/CLI.hpp>

#include <exception>
#include <iostream>

namespace {

using Zel::NameSpace;

/// The scope of a full name below `outer`; null if there is none.
const NameSpace* scopeOf(const NameSpace& outer, std::string_view fullName) {
  const std::size_t end = fullName.find("::");
  for (const NameSpace& scope : outer.scopes()) {
    if (scope.name().view() == fullName.substr(0, end)) {
      return end == fullName.npos ? &scope : scopeOf(scope, fullName.substr(end + 2));
    }
  }
  return nullptr;
}

void printScopes(const NameSpace& outer, const std::string& prefix) {
  for (const NameSpace& scope : outer.scopes()) {
    const std::string name = prefix + scope.name().charPtr();
    if (!scope.types().empty()) {
      std::cout << name << '\n';
    }
    printScopes(scope, name + "::");
  }
}

int printTypes(const std::vector<std::string>& names) {
  for (const std::string& name : names) {
    const Zel::ZelType* const type = Zel::ZelType::type(name);
    if (type == nullptr) {
      std::cerr << "inspect: no type " << name << '\n';
      return 1;
    }
    printType(std::cout, *type);
  }
  return 0;
}

int printScope(const NameSpace& root, const std::string& name) {
  const NameSpace* const scope = scopeOf(root, name);
  if (scope == nullptr) {
    std::cerr << "inspect: no scope " << name << '\n';
    return 1;
  }
  for (const Zel::ZelType* const type : scope->types()) {
    printType(std::cout, *type);
  }
  return 0;
}

} // namespace

int main(int argc, char** argv) try {
  CLI::App program("Prints the reference of the types of the library, from their records.");
  std::vector<std::string> names;
  std::string scope;
  std::string file;
  bool scopes = false;
  program.add_option("TYPE", names, "Full names of types; all types without any");
  auto* const scopeOption = program.add_option("--scope", scope, "The types declared in a scope");
  auto* const fileOption =
      program.add_option("--section", file, "The type names that a library file offers");
  program.add_flag("--scopes", scopes, "The scopes that have types");
  CLI11_PARSE(program, argc, argv);

  const auto reactor = Zel::IntrospectionReactor::global();
  if (*fileOption) {
    for (const std::string& name : typeNamesOf(file)) {
      std::cout << name << '\n';
    }
    return 0;
  }
  if (scopes) {
    printScopes(reactor->root(), "");
    return 0;
  }
  if (*scopeOption) {
    return printScope(reactor->root(), scope);
  }
  if (names.empty()) {
    for (const Zel::ZelType* const type : Zel::ZelType::types()) {
      names.emplace_back(type->fullName().charPtr());
    }
  }
  return printTypes(names);
} catch (const std::exception& failure) {
  std::cerr << "inspect: " << failure.what() << '\n';
  return 1;
}
