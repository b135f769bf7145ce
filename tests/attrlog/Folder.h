#pragma once

#include <Zel/AttrLogEntity>
#include <Zel/Attribute>
#include <Zel/Layers>
#include <attrlog/AdapterOf.h>

/// A directory of directories, to any depth, whose members are not made empty. It can be sent, and
/// is of no registered type: nobody mirrors it.
namespace Nested {

class Folder : public Zel::AttrLogEntity<Folder> {
public:
  static constexpr std::string_view zelTypeName = "Nested::Folder";
  static const Zel::TypeTable& zelTable();
  static const Zel::ZelType* _fwkType() { return nullptr; }
  class ZelNboAttrLogSa;

  class NotifieeConst;
  class Notifiee;
  class ZelTag : public Zel::MapEntry<ZelTag, Zel::Name, bool> {
    using MapEntry::MapEntry;
  };
  using FolderMap = Zel::HashMap<Folder, Zel::Name, Folder>;
  using TagMap = Zel::HashMap<ZelTag, Zel::Name, bool>;

  struct Attr {
    static constexpr Zel::AttributeId folder = 258;
    static constexpr Zel::AttributeId length = 259;
    static constexpr Zel::AttributeId tag = 260;
  };

  /// `length` is that of the name, and the tags are "draft", true, and "new", true.
  explicit Folder(Zel::Name name);

  Zel::Ptr<Folder> folder(Zel::Name name) const;
  Zel::Ptr<Folder> newFolder(Zel::Name name);
  Zel::ValidPtr<Folder> folderIs(Zel::Name name);
  Zel::Ptr<Folder> folderDel(Zel::Name name);
  Zel::Ptr<Folder> folderDel(FolderMap::Iterator& at);
  void folderDelAll();
  void folderNotify(Zel::Name name);
  const FolderMap& folderMap() const noexcept { return folder_; }

  unsigned length() const noexcept { return Zel::read(*this, length_); }
  void lengthIs(unsigned length);

  bool tag(Zel::Name name) const;
  void tagIs(Zel::Name name, bool value);
  bool tagDel(Zel::Name name);
  bool tagDel(TagMap::Iterator& at);
  void tagDelAll();
  Zel::Ptr<ZelTag> newTag(Zel::Name name, bool value);
  void tagNotify(Zel::Name name);
  const TagMap& tagMap() const noexcept { return tag_; }

  void zeroReferencesIs(bool /*zero*/) override { Zel::notifyZeroReferences(*this); }

  Zel::ListRaw<NotifieeConst>& zelNotifieeList() const noexcept { return notifiees_; }
  Zel::Name zelKey() const { return name(); }
  static constexpr Zel::Ptr<Folder> Folder::*zelMemberNext() noexcept {
    return &Folder::memberNext_;
  }

protected:
  ~Folder() override;

private:
  FolderMap folder_;
  unsigned length_;
  TagMap tag_;
  Zel::Ptr<Folder> memberNext_;
  mutable Zel::ListRaw<NotifieeConst> notifiees_;
};

class Folder::NotifieeConst
    : public Zel::NotifieeOf<Folder, Folder::NotifieeConst, Zel::Entity::NotifieeConst> {
public:
  virtual void onFolder(Zel::Name /*name*/) {}
  virtual void onFolderzelImmediate() {}
  virtual void onFolder() {}
  virtual void onLength() {}
  virtual void onTag(Zel::Name /*name*/) {}
  virtual void onTagzelImmediate() {}
  virtual void onTag() {}

  Zel::PendingKey<Zel::Name> zelPendingFolder;
  Zel::PendingKey<Zel::Name> zelPendingTag;
};

class Folder::Notifiee : public Folder::NotifieeConst {};

class Folder::ZelNboAttrLogSa : public Zel::AdapterOf<Folder> {
public:
  using AdapterOf::AdapterOf;
  class ZelNboAttrLogSaAdapter_;
  class FlowOut;

  virtual void onFolder(Zel::Name key) { zelOnKey(Attr::folder, &key); }
  virtual void onLength() { zelOnSingular(Attr::length); }
  virtual void onTag(Zel::Name key) { zelOnKey(Attr::tag, &key); }
};

class Folder::ZelNboAttrLogSa::ZelNboAttrLogSaAdapter_ : public Zel::AdapterNotifiee<Folder> {
public:
  using Folder::Notifiee::onFolder;
  void onFolder(Zel::Name key) override { zelForward(&ZelNboAttrLogSa::onFolder, key); }
  void onLength() override { zelForward(&ZelNboAttrLogSa::onLength); }
  using Folder::Notifiee::onTag;
  void onTag(Zel::Name key) override { zelForward(&ZelNboAttrLogSa::onTag, key); }
};

class Folder::ZelNboAttrLogSa::FlowOut : public Zel::EntityFlowOut {
public:
  class ZelZelIsNameDirty : public Zel::MapEntry<ZelZelIsNameDirty, Zel::Name, bool> {
    using MapEntry::MapEntry;
  };
  using Names = Zel::HashMap<ZelZelIsNameDirty, Zel::Name, bool>;

  using EntityFlowOut::EntityFlowOut;

private:
  Zel::DirtyKeys<Names> folders_{*this, Attr::folder};
  Zel::DirtyKeys<Names> tags_{*this, Attr::tag};
};

} // namespace Nested
