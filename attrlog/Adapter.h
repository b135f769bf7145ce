#pragma once

#include <Zel/FlowPlan>
#include <Zel/ValueCodec>
#include <attrlog/FlowOut.h>

namespace Zel {

/// The engine of the attribute log: everything that an adapter does, over the rows of its entity's
/// table. The adapter classes of the types are lines of names over it, see `attrlog/AdapterOf.h`.
///
/// Writing. A change reaches `zelOnSingular` or `zelOnKey` through the notification of the entity.
/// Where there is room, and nothing is owed, the record is written at once. Otherwise a mark is
/// left in a `FlowOut`, and the value is read when its turn comes: what changed three times goes
/// out once. Nothing waits in a queue of values.
///
/// Reading. `handleAttrDeserialization` applies a record through the entity's own mutators, marked
/// as active meanwhile: the notification that comes back is the record's echo and ends here.
///
/// Any mutator runs callbacks of the program, which may take the entity, the adapter or the
/// connection away. So every step behind one looks again.
class ZEL_API AttrLogAdapter : public Entity::ZelNboAttrLogSa {
public:
  void hasNotificationActiveIs(bool active) override;
  void notifierIs(const Ptr<const PtrInterface>& notifier) override;

  AttributeId handleAttrFlowOut(AttributeId start) override;
  void freeResyncState(const Ptr<NboAttrLog::FlowOut>& flowOut) override;
  void zelInstantiateSerialize() override;
  void doSerializeOrphan() override;
  void handleAttrDeserialization(AttributeId attr, DeserializationOptions options, unsigned size,
                                 const Ptr<NboAttrLog::In>& in) override;
  void handleAttrTransaction(AttributeId attr, AttrTransactionType type, unsigned n) override;
  void doNotification(AttributeId attr, void* key) override;
  void syncModeIs(SyncMode mode) override;

  /// Attaches a member of a directory to the directory's connection, and announces it.
  static Ptr<Entity::ZelNboAttrLogSa> childIs(Entity::ZelNboAttrLogSa& parent, const FlowStep& step,
                                              Zel_BitSet flags, Entity& child, unsigned option,
                                              PtrInterface* owner);

protected:
  AttrLogAdapter(const FlowPlan& plan, Zel_BitSet flags, unsigned option,
                 const Ptr<NboAttrLog::Out>& out, PtrInterface* owner);
  ~AttrLogAdapter() override;

  /// Takes the notifiee that will hear of the entity, and the entity.
  void attach(const Ptr<PtrInterface::NotifieeConst>& heard, const Ptr<const Entity>& entity);
  /// The last of what an adapter does, before any part of it is gone.
  void detach() noexcept;

  // What the lines of the types stand for.

  /// `onX()` of a plain attribute.
  void zelOnSingular(AttributeId attr);
  /// `zelHandleXSerialize()`: writes a text as far as there is room; whether it is out.
  bool zelSerializeText(AttributeId attr);
  /// `onX(key)`: looks the key up, and passes on what is there.
  void zelOnKey(AttributeId attr, const void* key);
  /// `zelHandleXSerializeSing(key, value, deleted)`; whether it is done.
  bool zelSerializeSing(AttributeId attr, const void* key, const void* value, bool deleted);
  /// `zelHandleXSerializeSing(key, child)`; null if the key has gone.
  void zelSerializeChild(AttributeId attr, const void* key, Entity* child);
  /// `zelHandleXSerializeColl()`: one step of the flow-out; whether there is nothing left.
  bool zelSerializeColl(AttributeId attr);
  /// `xNboAttrLogAdapterIs`, `xNboAttrLogAdapter` and `xNboAttrLogAdapterDel` of a directory.
  Ptr<Entity::ZelNboAttrLogSa> zelChildAdapterIs(AttributeId attr, Zel_BitSet flags, Entity* child,
                                                 unsigned option, PtrInterface* owner);
  Ptr<Entity::ZelNboAttrLogSa> zelChildAdapter(Entity* child) const;
  Ptr<Entity::ZelNboAttrLogSa> zelChildAdapterDel(Entity* child);

private:
  enum class Gate : std::uint8_t { pass, notDone, done };

  /// Whether a change may go out. Clears the mark of a record that is being applied, whose echo
  /// this then is.
  Gate gate(const FlowStep& step) {
    constexpr unsigned closed = flagSyncFanOut | flagFlowIn | flagChildPending | flagMuted |
                                flagReactorActive | flagReadOnly;
    const unsigned flags = zel_bitSet().word();
    const bool isOpen = (flags & (closed | flagStreaming)) == flagStreaming && nboAttrLogOut();
    if (isOpen && ((flags & flagMember) == 0 || isHeldMember())) [[likely]] {
      return Gate::pass;
    }
    return gateSlow(step);
  }
  /// Whether a change is the echo of the record that is being applied, which ends here. Clears the
  /// mark.
  bool isEcho() noexcept {
    if ((zel_bitSet().word() & (flagReactorActive | flagSyncFanOut)) != flagReactorActive) {
      return false;
    }
    reactorActiveIs(false);
    return true;
  }
  bool isHeldMember() const noexcept {
    return rawNotifier() != nullptr && static_cast<const Entity*>(rawNotifier())->zelHasParent();
  }
  Gate gateSlow(const FlowStep& step);
  /// A change is to go out when its turn has come.
  void valueOwe(EntityFlowOut& flow, const FlowStep& step);
  void keyOwe(EntityFlowOut& flow, AttributeId attr, const void* key, bool dirty);
  EntityFlowOut* owedOrMade(AttributeId attr);
  EntityFlowOut* owedBehind(AttributeId attr);
  void keyOweBehind(const FlowStep& step, const void* key, bool dirty);
  bool isOwed(const FlowStep& step, const void* key) const;
  bool isGone();
  bool isRefusing() const;
  bool isMute() const;
  void readOnlyCheck(const FlowStep& step);
  bool isScheduled() const noexcept { return hasFlag(flagScheduledFlowOut); }
  /// Whether a record that is applied may write to a tree that is frozen: one that comes to a
  /// mirror, or from a mirror whose session says whether it is applied at all.
  bool mayPermit() const noexcept {
    return !root() || root()->isImported() || root()->input() != NboAttrLog::Root::Input::all;
  }
  /// Whether a record may be written now.
  bool hasRoom(const NboAttrLog::Out& out) const noexcept {
    return isScheduled() ? out.hasRoomForRecord() : out.hasSufficientBuffer();
  }
  EntityFlowOut* owed() const noexcept { return static_cast<EntityFlowOut*>(flowOut().ptr()); }
  const FlowStep& step(AttributeId attr) const noexcept { return plan().knownStep(attr); }

  /// Makes a `FlowOut` that owes nothing yet but what concerns this attribute; null if the
  /// connection has none to give.
  EntityFlowOut* absorb(AttributeId attr);
  std::size_t freeSpace() const noexcept;
  template <class Payload>
  void write(const FlowStep& step, const NboAttrLog::MsgHeader& header, Payload&& payload);
  void recordFailed(const FlowStep& step, const String8& why);

  void serializeKeyed(const FlowStep& step, const void* key, const void* value, bool deleted);
  bool serializeTextEntry(const FlowStep& step, const void* key, const String8& text, bool deleted);
  bool textEntryAbsorbed(const FlowStep& step, const void* key,
                         const String8::IteratorConst& position);
  bool textEntryRestart(EntityFlowOut& flow, const FlowStep& step, const void* key,
                        const String8::IteratorConst& position, bool deleted);
  void valueEnq(const FlowStep& step, const String8::IteratorConst& position, const void* key);
  void writeDeletion(const FlowStep& step, const void* key);
  void writeText(const FlowStep& step, const void* key, String8::IteratorConst& position);

  enum class Walked : std::uint8_t { suspended, stoppedAtLast, ranOut };
  Walked walk(const FlowStep& step, EntityFlowOut* flowOut);
  void walkMark(const FlowStep& step, EntityFlowOut& flowOut, AttrTransactionType type);
  bool walkEnd(const FlowStep& step, EntityFlowOut& flowOut);
  bool keysWork(const FlowStep& step, EntityFlowOut& flowOut);
  void entrySerialize(const FlowStep& step, const void* key, PtrInterface* entry);
  bool owes(const FlowStep& step, const EntityFlowOut& flow) const;
  bool textResume(const FlowStep& step, EntityFlowOut& flowOut);
  void allMark(const FlowStep& step, EntityFlowOut& flowOut);

  bool announcesWhole(const FlowStep& step) const;
  void differenceOwe();
  void keysOwe(const FlowStep& step, const Entity& fresh);
  void childAttach(const FlowStep& step, Entity& child);
  void deletionForget(AttributeId attr, const void* key, const Entity& child);
  void childAnnounce(const FlowStep& step, const void* key, Entity& child);
  Ptr<PtrInterface> memberTake(Entity& directory, const FlowStep& step, const void* key) const;
  void childGone(const Ptr<PtrInterface>& child) const;

  void recordRead(AttributeId attr, DeserializationOptions options, unsigned size,
                  const Ptr<NboAttrLog::In>& in);
  bool numberRead(AttributeId attr);
  void singularRead(const FlowStep& step, NboAttrLog::In& in, bool apply);
  void textRead(const FlowStep& step, NboAttrLog::In& in, unsigned size, bool apply);
  void textEntryRead(const FlowStep& step, NboAttrLog::In& in, unsigned size, bool apply);
  void keyedRead(const FlowStep& step, NboAttrLog::In& in, bool apply);
  void deletionRead(const FlowStep& step, NboAttrLog::In& in, bool apply);
  void childRead(const FlowStep& step, NboAttrLog::In& in, std::size_t payload,
                 std::size_t entityIdAt, bool apply);
  AttributeId compoundRead(AttributeId attr, NboAttrLog::In& in, std::size_t& entityIdAt);
  void syncModeRead(NboAttrLog::In& in);
  void enumRead(const ValueRecord& record, void* to, NboAttrLog::In& in);
  void keyLimit(const FlowStep& step, const void* key) const;
  void entryApply(const FlowStep& step, const void* key, const void* value);
  void channelModeIs(unsigned mode) const;

  bool isWalkAhead(AttributeId attr) const;
  void textEnd(NboAttrLog::FlowIn& flow);
  void textDrop(NboAttrLog::FlowIn& flow);
  void entriesSweep(const FlowStep& step, AttrTransactionType type);
  void childrenSweep(const FlowStep& step, AttrTransactionType type);
  bool entrySpare(const FlowStep& step, const CollectionPosition& at);
  void entryDelete(const FlowStep& step, const CollectionPosition& at);
};

} // namespace Zel
