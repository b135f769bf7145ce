#pragma once

#include <Zel/ZelType>

#include <iosfwd>

/// Writes what the records say of a type as a section of Markdown: what it is, what it derives from
/// and is made of, and its attributes in the order of registration.
void printType(std::ostream& out, const Zel::ZelType& type);
