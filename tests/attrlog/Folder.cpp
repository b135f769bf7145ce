#include "Folder.h"

#include <attrlog/MakeAdapter.h>

namespace Nested {

namespace {

using Callbacks = Folder::NotifieeConst;
using Row = Zel::Rows<Folder>;

constexpr Zel::AttrRow rows[] = {
    Row::Collection<Folder::FolderMap, &Folder::folderMap>::Of<>::instantiating<
        &Folder::folder, &Folder::folderIs, &Folder::folderDel, &Folder::folderDelAll,
        &Folder::folderNotify, Callbacks, &Callbacks::onFolder, &Callbacks::onFolder,
        &Callbacks::zelPendingFolder>(Folder::Attr::folder, "folder"),
    Row::singular<&Folder::length, &Folder::lengthIs, Callbacks, &Callbacks::onLength>(
        Folder::Attr::length, "length"),
    Row::Collection<Folder::TagMap, &Folder::tagMap>::keyed<
        &Folder::tag, &Folder::tagIs, &Folder::tagDel, &Folder::tagDelAll, &Folder::tagNotify,
        Callbacks, &Callbacks::onTag, &Callbacks::onTag, &Callbacks::zelPendingTag>(
        Folder::Attr::tag, "tag"),
};
static_assert(Zel::rowsAreInOrder(rows, Zel::firstEntityAttributeId));

constexpr Zel::TypeTable table = Zel::tableOf<Folder, Zel::Name>(rows);

} // namespace

const Zel::TypeTable& Folder::zelTable() { return table; }

Folder::Folder(Zel::Name name)
    : AttrLogEntity(name), length_(static_cast<unsigned>(name.length())) {
  newTag("draft", true);
  newTag("new", true);
}

Folder::~Folder() {
  Zel::directoryTearDown(notifiees_, [this] { folderDelAll(); });
}

Zel::Ptr<Folder> Folder::folder(Zel::Name name) const {
  return Zel::memberRead(*this, folder_, name);
}
Zel::Ptr<Folder> Folder::newFolder(Zel::Name name) {
  return Zel::memberNew(*this, Attr::folder, folder_, Zel::makeObject<Folder>(name));
}
Zel::ValidPtr<Folder> Folder::folderIs(Zel::Name name) {
  return Zel::memberIs<&Folder::folderNotify>(*this, folder_, name,
                                              [&] { return newFolder(name); });
}
Zel::Ptr<Folder> Folder::folderDel(Zel::Name name) {
  return Zel::memberDel<Attr::folder, &Folder::folderNotify>(*this, folder_, name);
}
Zel::Ptr<Folder> Folder::folderDel(FolderMap::Iterator& at) {
  return Zel::memberDel<Attr::folder, &Folder::folderNotify>(*this, folder_, at);
}
void Folder::folderDelAll() {
  Zel::collectionDelAll(*this, folder_, [this](FolderMap::Iterator& at) { folderDel(at); });
}
void Folder::folderNotify(Zel::Name name) {
  Zel::notifyOwner(*this, Attr::folder, [&](NotifieeConst& notifiee) { notifiee.onFolder(name); });
}

void Folder::lengthIs(unsigned length) {
  Zel::singularIs<&NotifieeConst::onLength>(*this, Attr::length, length_, length);
}

bool Folder::tag(Zel::Name name) const { return Zel::keyedRead(*this, tag_, name); }
void Folder::tagIs(Zel::Name name, bool value) {
  Zel::keyedIs<Attr::tag, &Folder::newTag, &Folder::tagNotify>(*this, tag_, name, value);
}
bool Folder::tagDel(Zel::Name name) {
  return Zel::keyedDel<Attr::tag, &Folder::tagNotify>(*this, tag_, name);
}
bool Folder::tagDel(TagMap::Iterator& at) {
  return Zel::keyedDel<Attr::tag, &Folder::tagNotify>(*this, tag_, at);
}
void Folder::tagDelAll() {
  Zel::collectionDelAll(*this, tag_, [this](TagMap::Iterator& at) { tagDel(at); });
}
Zel::Ptr<Folder::ZelTag> Folder::newTag(Zel::Name name, bool value) {
  return Zel::keyedNew<Attr::tag>(*this, tag_, name, value);
}
void Folder::tagNotify(Zel::Name name) {
  Zel::notifyOwner(*this, Attr::tag, [&](NotifieeConst& notifiee) { notifiee.onTag(name); });
}

} // namespace Nested

ZEL_ADAPTER(Nested::Folder)
