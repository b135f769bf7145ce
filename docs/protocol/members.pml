/* One member of a directory, between an exporter and its mirror: who it is, what is in it, and how a
 * walk marks and sweeps. The member has an attribute and a collection of one entry.
 *
 * An end knows the member under an id of this connection, or not at all. Ids of the exporter are even,
 * those of the mirror odd; a record for an id that nobody has is passed over. Rules and claims are told
 * in README.md, by the same numbers and names; -DNO_... removes a rule.
 *
 * Bounds: WRITES operations (make, delete, set, put an entry, erase it) at either end, CUTS cuts, GRANTS
 * withdrawals; WINDOW records of the log on the way in one direction, others wait. Who makes and deletes,
 * who sets and who puts are drawn apart: each either end. Variant: SOFT: withdrawals take what crosses.
 */
#ifndef WRITES
#define WRITES 3
#endif
#ifndef CUTS
#define CUTS 1
#endif
#ifndef GRANTS
#define GRANTS 1
#endif
#ifndef WINDOW
#define WINDOW 4
#endif
#define ROOM (WINDOW + 5) /* freeze, thaw and the like are few, and have room of their own */
#define EXPORTER 0
#define MIRROR 1

hidden byte equal_at_rest, live_at_rest, silent_while_frozen, connection_holds, deletion_sent,
    room_is_enough, no_write_lost;
#define CLAIM(name, what) assert(name || (what))

/* BEGIN, END: of the directory. ANNOUNCE id, DELETE: by key. SET id value. MARK, PUT, ERASE, SWEEP id: of
 * the member's collection. SYNCED: the walk is over. */
mtype = { BEGIN, END, SYNCED, ANNOUNCE, DELETE, SET, MARK, PUT, ERASE, SWEEP, FREEZE, FROZEN, THAW };
mtype = { GONE, WALKED, HELD, THAWING, THAWED, FREEZING };

/* The model at each end. */
bit there[2];
byte attr[2];
bit entry[2];

/* Each end's adapters on this connection. */
chan sent[2] = [ROOM] of { mtype, byte, byte };
bit connected[2];
byte id[2];        /* of the member; 0: it has no adapter here */
byte lingers[2];   /* the id of one that was deleted, and that a program still holds */
byte lastId[2];
bit pendingKey[2];
bit pendingGone[2];   /* deleted since: the peer is to be notified of that too */
bit pendingAttr[2];
bit pendingEntry[2];
byte walks[2];     /* of the member's collection: 1 begin marker, 2 entries, 3 end marker are pending */
bit memberMarked[2];    /* the member is marked for the sweep */
bit marked[2];     /* its entry is */
bit isOpen[2];     /* between the peer's begin and end marker for its collection */
bit broken;

/* The exporter's. */
mtype stand;
byte walkAt;
bit granted;
bit beforeKey, beforeAttr, beforeEntry, beforeWalk; /* when the thaw was decided, and still */

/* The mirror's. */
bit live, frozen, answers;

byte writes = WRITES, cuts = CUTS, grants = GRANTS, next = 1;
bit keyOwner, attrOwner, entryOwner;

/* For the claims alone: who made or deleted the member last, and whether that one has notified that it does
 * not stand. */
bit lastKey, lastBy, notified;

hidden byte m_, i_, v_;

#ifdef TRACE
#define TELL(...) printf(__VA_ARGS__)
#else
#define TELL(...) skip
#endif

#define HAS_ROOM(s) (len(sent[s]) < WINDOW)
#define PEER(s) (1 - (s))
#define IS_OWN(s, i) (((i) & 1) == (s)) /* the exporter's are even */

inline say(s, m, i, v) {
  if
  :: broken -> skip
  :: else -> CLAIM(room_is_enough, len(sent[s]) < ROOM); sent[s]!m, i, v
  fi
}

/* -- The model and its adapters ---------------------------------------------------------------- */

inline forget(s) { /* the adapter goes: nothing of the member is pending */
  id[s] = 0; pendingAttr[s] = 0; pendingEntry[s] = 0; walks[s] = 0; memberMarked[s] = 0; isOpen[s] = 0;
  marked[s] = 0;
  if
  :: s == EXPORTER ->
     beforeAttr = 0; beforeEntry = 0; beforeWalk = 0
  :: else
  fi
}
inline make(s) { there[s] = 1; attr[s] = 0; entry[s] = 0 }
inline take(s) { there[s] = 0; attr[s] = 0; entry[s] = 0; forget(s) }

/* What follows an announcement. Rule 19, plain members: to a frozen root all of the member, its
 * collection between markers; to a thawed root what its maker has written, which is what differs from a
 * new member, and no markers, for there is nothing yet to be swept. The peer's program may write to the
 * member as soon as it has notified of it. */
#ifdef NO_PLAIN_MARKERS
#define IS_SWEPT(s) 1
#else
#define IS_SWEPT(s) ((s) == EXPORTER && stand != THAWED)
#endif
#ifdef NO_PLAIN_VALUES
#define IS_WHOLE(s) 1
#else
#define IS_WHOLE(s) ((s) == EXPORTER && stand != THAWED)
#endif
inline markWhole(s) {
  pendingAttr[s] = (IS_WHOLE(s) || attr[s] != 0);
  if
  :: IS_SWEPT(s) -> walks[s] = 1; pendingEntry[s] = 0
  :: else -> pendingEntry[s] = entry[s]
  fi;
  if
  :: s == EXPORTER && stand == THAWING -> /* belongs to what was pending, with its announcement */
     beforeAttr = pendingAttr[s]; beforeWalk = (walks[s] != 0); beforeEntry = pendingEntry[s]
  :: else
  fi
}

/* -- What is pending is sent ---------------------------------------------------------------------- */

inline flowKey(s) {
  TELL("end %d: key, gone %d, there %d, id %d\n", s, pendingGone[s], there[s], id[s]);
  if
  :: pendingGone[s] || !there[s] ->
     say(s, DELETE, 0, 0);
     pendingGone[s] = 0;
     pendingKey[s] = there[s]
  :: else ->
     if :: id[s] == 0 -> lastId[s] = lastId[s] + 2; id[s] = lastId[s] :: else fi;
     say(s, ANNOUNCE, id[s], 0);
     pendingKey[s] = 0;
#ifdef NO_WHOLE
     if :: s == MIRROR || stand == THAWED || stand == WALKED -> markWhole(s) :: else fi
#else
     markWhole(s)
#endif
  fi;
  if :: s == EXPORTER && !pendingKey[s] -> beforeKey = 0 :: else fi;
  thawIf(s)
}
inline flowAttr(s) {
  say(s, SET, id[s], attr[s]);
  pendingAttr[s] = 0;
  if :: s == EXPORTER -> beforeAttr = 0 :: else fi;
  thawIf(s)
}
inline flowEntry(s) {
  if
  :: entry[s] -> say(s, PUT, id[s], 0)
  :: else -> say(s, ERASE, id[s], 0)
  fi;
  pendingEntry[s] = 0;
  if :: s == EXPORTER -> beforeEntry = 0 :: else fi;
  thawIf(s)
}
inline flowWalk(s) {
  if
  :: walks[s] == 1 -> say(s, MARK, id[s], 0); walks[s] = 2
  :: walks[s] == 2 ->
     if :: entry[s] -> say(s, PUT, id[s], 0) :: else fi;
     pendingEntry[s] = 0;
     if :: s == EXPORTER -> beforeEntry = 0 :: else fi;
     walks[s] = 3
  :: walks[s] == 3 ->
     say(s, SWEEP, id[s], 0);
     walks[s] = 0;
     if :: s == EXPORTER -> beforeWalk = 0 :: else fi
  fi;
  thawIf(s)
}

/* -- Freeze, frozen, thaw: rules 4 to 8, as in chain.pml --------------------------------------- */

#ifdef SOFT /* Rule 12, soft */
#define TAKEN (stand == THAWED || stand == FREEZING)
#define HAS_TAKEN (stand != THAWED && stand != THAWING && stand != FREEZING)
#else
#define TAKEN (stand == THAWED)
#define HAS_TAKEN (stand != THAWED && stand != THAWING)
#endif
inline freeze() {
  if
  :: stand == THAWED ->
     stand = FREEZING;
     if :: !TAKEN -> isOpen[EXPORTER] = 0 :: else fi;
     say(EXPORTER, FREEZE, 0, 0)
  :: stand == THAWING -> stand = HELD
  :: else
  fi
}
inline decide() {
  stand = THAWING;
  beforeKey = pendingKey[EXPORTER]; beforeAttr = pendingAttr[EXPORTER]; beforeEntry = pendingEntry[EXPORTER];
  beforeWalk = (walks[EXPORTER] != 0);
  thawIf(EXPORTER)
}
inline thawIf(s) {
  if
  :: s == EXPORTER && stand == THAWING && !beforeKey && !beforeAttr && !beforeEntry && !beforeWalk ->
     TELL("thaw sent\n");
     say(EXPORTER, THAW, 0, 0);
     stand = THAWED
  :: else
  fi
}
/* Rules 5 and 7, drop and resend: the key as it stands, a member whole. What is for an unknown id belongs to a key
 * that is sent anew: its announcement was dropped too. */
inline drop() {
  TELL("dropped\n");
  CLAIM(silent_while_frozen, stand == FREEZING);
  if
  :: m_ == ANNOUNCE || m_ == DELETE ->
     notified = 1; /* Rule 11, count */
#ifndef NO_KEY_DROPPED
     pendingKey[EXPORTER] = 1
#endif
  :: m_ == SET && i_ == id[EXPORTER] -> pendingAttr[EXPORTER] = 1
  :: (m_ == PUT || m_ == ERASE || m_ == SWEEP) && i_ == id[EXPORTER] -> pendingEntry[EXPORTER] = 1
  :: else
  fi
}

/* -- What comes is applied --------------------------------------------------------------------- */

inline announced(s, i) {
  if
  :: lingers[s] == i -> /* Rule 18, let go: of a member that has left, on the next record under its id */
#ifdef NO_LET_GO
     CLAIM(connection_holds, 0);
#endif
     lingers[s] = 0
  :: else
  fi;
  /* The exporter is never sent its own ids but for the member that has it. */
  CLAIM(connection_holds, s == MIRROR || !IS_OWN(s, i) || (there[s] && id[s] == i));
  if
  :: !there[s] -> make(s); id[s] = i
  :: there[s] && id[s] == i -> skip
  :: there[s] && id[s] != i && id[s] == 0 -> id[s] = i
  :: there[s] && id[s] != i && id[s] != 0 && IS_OWN(s, id[s]) ->
#ifndef NO_ONE_ID
     if :: s == MIRROR -> id[s] = i :: else fi /* Rule 16, one id: the exporter's */
#else
     skip
#endif
  :: there[s] && id[s] != i && id[s] != 0 && !IS_OWN(s, id[s]) ->
#ifndef NO_DELETION_PENDING
     CLAIM(deletion_sent, 0); /* of another member that had the key: it comes before */
#endif
     take(s); make(s); id[s] = i
  fi;
  memberMarked[s] = 0
}

inline applyMember(s) { /* what is for the member or its key */
  if
  :: m_ == ANNOUNCE -> announced(s, i_)
  :: m_ == DELETE -> take(s)
  :: m_ != ANNOUNCE && m_ != DELETE && there[s] && i_ == id[s] && i_ != 0 ->
     if
     :: m_ == SET -> attr[s] = v_
     :: m_ == PUT -> entry[s] = 1; marked[s] = 0
     :: m_ == ERASE -> entry[s] = 0; marked[s] = 0
     :: m_ == MARK -> marked[s] = entry[s]; isOpen[s] = 1
     :: m_ == SWEEP ->
#ifndef NO_SWEEP
        if :: marked[s] -> entry[s] = 0 :: else fi; /* Rule 15, sweep */
#endif
        marked[s] = 0; isOpen[s] = 0
     fi
  :: else
  fi
}

inline fromExporter() {
  sent[EXPORTER]?m_, i_, v_;
  TELL("mirror reads %e %d %d\n", m_, i_, v_);
  if
  :: m_ == BEGIN -> if :: there[MIRROR] && id[MIRROR] != 0 -> memberMarked[MIRROR] = 1 :: else fi
  :: m_ == END ->
     if
     :: there[MIRROR] && memberMarked[MIRROR] -> take(MIRROR)
#ifndef NO_SWEEP_OF_UNKNOWN /* Rule 15, sweep: and what this connection does not know */
     :: there[MIRROR] && !memberMarked[MIRROR] && id[MIRROR] == 0 -> take(MIRROR)
#endif
     :: else
     fi
  :: m_ == SYNCED -> live = 1
  :: m_ == FREEZE -> frozen = 1; answers = 1
  :: m_ == THAW -> frozen = 0
  :: else -> applyMember(MIRROR)
  fi;
  m_ = 0; i_ = 0; v_ = 0
}

inline fromMirror() {
  sent[MIRROR]?m_, i_, v_;
  TELL("exporter reads %e %d %d\n", m_, i_, v_);
  if
  :: m_ == FROZEN -> stand = HELD
  :: m_ != FROZEN && TAKEN -> applyMember(EXPORTER)
  :: else -> drop()
  fi;
  m_ = 0; i_ = 0; v_ = 0
}

/* -- The walk of the directory ----------------------------------------------------------------- */

inline walkDir() {
  if
  :: walkAt == 0 -> say(EXPORTER, BEGIN, 0, 0); walkAt = 1
  :: walkAt == 1 ->
     if
     :: there[EXPORTER] -> pendingGone[EXPORTER] = 0; flowKey(EXPORTER)
     :: else
     fi;
     walkAt = 2
  :: walkAt == 2 -> say(EXPORTER, END, 0, 0); walkAt = 3
  :: walkAt == 3 && walks[EXPORTER] == 0 ->
     say(EXPORTER, SYNCED, 0, 0); walkAt = 0; stand = HELD
  fi
}
#define CAN_WALK (HAS_ROOM(EXPORTER) && stand == WALKED && (walkAt != 3 || (walks[EXPORTER] == 0 && !pendingAttr[EXPORTER])))

/* -- Connections ------------------------------------------------------------------------------- */

inline down(s) {
  TELL("end %d learns of the cut\n", s);
  do :: len(sent[PEER(s)]) > 0 -> sent[PEER(s)]?_, _, _ :: else -> break od;
  connected[s] = 0; lastId[s] = s; lingers[s] = 0; pendingKey[s] = 0; pendingGone[s] = 0;
  forget(s)
}
inline exporterLearns() {
  down(EXPORTER);
  stand = GONE; walkAt = 0; beforeKey = 0
}
#define IS_UNDER_WAY (pendingKey[MIRROR] || sent[MIRROR]??[ANNOUNCE, _, _] || sent[MIRROR]??[DELETE, _, _])
inline mirrorLearns() {
  if
  :: lastBy == MIRROR && (there[EXPORTER] != lastKey || IS_UNDER_WAY) -> notified = 1
  :: else
  fi;
  down(MIRROR); live = 0; frozen = 1; answers = 0
}
inline connect() {
  TELL("connected\n");
  if :: connected[EXPORTER] -> exporterLearns() :: else fi;
  broken = 0; connected[EXPORTER] = 1; connected[MIRROR] = 1;
  stand = WALKED
}

/* -- Programs ---------------------------------------------------------------------------------- */

#define MAY(s, owner) \
  (writes > 0 && (s == EXPORTER || !frozen) && \
   (owner == s || (s == EXPORTER && HAS_TAKEN)))

inline writeKey(s, keep) {
  writes--;
  if
  :: !there[s] -> TELL("end %d makes\n", s); make(s)
  :: else ->
     TELL("end %d deletes\n", s);
     if :: keep -> lingers[s] = id[s] :: else fi;
     take(s);
#ifndef NO_DELETION_PENDING
     pendingGone[s] = connected[s] /* Rule 17, deletions stay pending */
#endif
  fi;
  pendingKey[s] = connected[s];
  lastKey = there[s]; lastBy = s; notified = 0
}
inline writeAttr(s) {
  TELL("end %d sets %d\n", s, next);
  writes--;
  attr[s] = next; next++;
  if :: id[s] != 0 -> pendingAttr[s] = 1 :: else fi
}
inline writeEntry(s) {
  TELL("end %d entry %d\n", s, 1 - entry[s]);
  writes--;
  entry[s] = 1 - entry[s];
  marked[s] = 0;
  if :: id[s] != 0 -> pendingEntry[s] = 1 :: else fi
}

/* -- Who takes the steps ----------------------------------------------------------------------- */

proctype End(byte s) {
  end: do
  :: d_step { MAY(s, keyOwner) -> writeKey(s, 0) }
  :: d_step { MAY(s, keyOwner) && there[s] && id[s] != 0 && s == MIRROR -> writeKey(s, 1) }
  :: d_step { MAY(s, attrOwner) && there[s] -> writeAttr(s) }
  :: d_step { MAY(s, entryOwner) && there[s] -> writeEntry(s) }
  :: d_step { HAS_ROOM(s) && pendingKey[s] && !(s == EXPORTER && stand == WALKED) -> flowKey(s) }
  :: d_step { HAS_ROOM(s) && pendingAttr[s] -> flowAttr(s) }
  :: d_step { HAS_ROOM(s) && pendingEntry[s] && walks[s] == 0 && !isOpen[s] -> flowEntry(s) }
  :: d_step { HAS_ROOM(s) && walks[s] != 0 && !isOpen[s] -> flowWalk(s) }
  od
}

proctype Exporter() {
  end: do
  :: d_step { connected[EXPORTER] && len(sent[MIRROR]) > 0 -> fromMirror() }
  :: d_step { CAN_WALK -> walkDir() }
  :: d_step { granted && stand == HELD -> decide() }
  :: d_step { grants > 0 && granted -> TELL("withdrawn\n"); grants--; granted = 0; freeze() }
  :: d_step { !granted -> granted = 1 }
  :: d_step { connected[EXPORTER] && broken -> exporterLearns() }
  od
}

proctype Mirror() {
  end: do
  :: d_step { connected[MIRROR] && len(sent[EXPORTER]) > 0 -> fromExporter() }
  :: d_step { answers && !pendingKey[MIRROR] && !pendingAttr[MIRROR] && !pendingEntry[MIRROR] && walks[MIRROR] == 0 ->
              answers = 0; say(MIRROR, FROZEN, 0, 0) }
  :: d_step { cuts > 0 && !broken -> TELL("cut\n"); cuts--; broken = 1 }
  :: d_step { connected[MIRROR] && broken -> mirrorLearns() }
  :: d_step { !connected[MIRROR] -> connect() }
  od
}

/* Whatever is left of the bounds may be left out from any moment on: what is claimed of rest is claimed of
 * each moment at which writes and faults may end. */
proctype Calm() { d_step { writes = 0; cuts = 0; grants = 0 } }

inline atRest() {
  CLAIM(live_at_rest, connected[EXPORTER] && connected[MIRROR] && live && stand == THAWED && !frozen);
  CLAIM(equal_at_rest, there[0] == there[1] && attr[0] == attr[1] && entry[0] == entry[1]);
  CLAIM(equal_at_rest, id[0] == id[1]);
#if defined(SOFT) && CUTS == 0
  CLAIM(no_write_lost, !notified);
#endif
  CLAIM(no_write_lost, there[0] == lastKey || notified)
}

init {
  atomic {
    if :: keyOwner = EXPORTER :: keyOwner = MIRROR fi;
    if :: attrOwner = EXPORTER :: attrOwner = MIRROR fi;
    if :: entryOwner = EXPORTER :: entryOwner = MIRROR fi;
    connected[0] = 1; connected[1] = 1; live = 1; stand = THAWED; granted = 1;
    lastId[MIRROR] = 1; lastId[EXPORTER] = 0;
    if
    :: skip
    :: there[0] = 1; there[1] = 1; id[0] = 2; id[1] = 2; lastId[EXPORTER] = 2
    :: there[0] = 1; there[1] = 1; id[0] = 3; id[1] = 3; lastId[MIRROR] = 3
    fi;
    lastKey = there[0];
    run End(EXPORTER); run End(MIRROR); run Exporter(); run Mirror(); run Calm()
  }
  timeout -> d_step { atRest() }
}
