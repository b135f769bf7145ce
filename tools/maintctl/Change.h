#pragma once

#include "Tree.h"

#include <string>
#include <vector>

/// Changes of the tree, through the mutators of its types. All take targets that were looked up for
/// their purpose, and throw `Failure`, or what the mutators throw.
namespace Maintctl {

/// Writes an attribute, or an entry that is there.
void setValue(const Target& target, const std::string& text);

/// The same if `old` stands there, which the device decides. Throws `Failure` with `exitDiffers` if
/// something else does.
void setValueIf(Device& device, const Target& target, const std::string& old,
                const std::string& text);

/// Makes what is not there yet: a member, of its arguments behind the key, or an entry, of its
/// value, which is true if the collection is a set. In a collection of values that bring their key,
/// the target may be the collection. What is there already is left as it is if it may exist;
/// whether an entry is there, the device decides.
void add(Device& device, const Target& target, const std::vector<std::string>& arguments,
         bool mayExist);

/// Takes an entry or a member out.
void remove(const Target& target);

/// Makes it so whether or not it is there: what a line of a dump says.
void put(const Target& target, const std::vector<std::string>& arguments);

} // namespace Maintctl
