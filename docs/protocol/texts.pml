/* Long texts, between an exporter and its mirror: two text attributes of one entity, whose texts are
 * short, one record, or long, two. A record carries bytes, and whether more follows; which text they are
 * of is here for the claim alone that no texts are joined.
 *
 * Rules and claims are told in README.md, by the same numbers and names; -DNO_... removes a rule.
 * Bounds: WRITES writes at either end, CUTS cuts, GRANTS withdrawals. Variant: SOFT: withdrawals take what crosses.
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
#define ROOM (WINDOW + 5)
#define EXPORTER 0
#define MIRROR 1
#define NOBODY 2 /* no attribute's text is under way */

#define BIT(k) (1 << (k))
#define HAS(set, k) (((set) >> (k)) & 1)
#define TEXT(s, k) text[(s) * 2 + (k)]
#define IS_LONG(t) ((t) & 1)

hidden byte equal_at_rest, live_at_rest, silent_while_frozen, connection_holds, texts_whole, room_is_enough;
#define CLAIM(name, what) assert(name || (what))

/* MORE: a first part. LAST: the rest, or the whole of a short text. */
mtype = { MORE, LAST, ABORT, SYNCED, FREEZE, FROZEN, THAW };
mtype = { GONE, WALKED, HELD, THAWING, THAWED, FREEZING };

byte text[4];
chan sent[2] = [ROOM] of { mtype, byte, byte };
bit connected[2];
byte pending[2];
byte going[2];    /* the attribute whose text is under way from here */
byte rest[2];     /* that text, pinned */
byte aborts[2];   /* abort markers that are pending */
byte coming[2];   /* the attribute whose text is under way to here */
byte part[2];     /* that text */
bit broken;

mtype stand;
bit granted;
byte before;
bit live, frozen, answers;

byte writes = WRITES, cuts = CUTS, grants = GRANTS, next = 1;
bit owner[2];

hidden byte m_, k_, t_;

#ifdef TRACE
#define TELL(...) printf(__VA_ARGS__)
#else
#define TELL(...) skip
#endif

#define HAS_ROOM(s) (len(sent[s]) < WINDOW)
#define PEER(s) (1 - (s))

inline say(s, m, k, t) {
  if
  :: broken -> skip
  :: else -> CLAIM(room_is_enough, len(sent[s]) < ROOM); sent[s]!m, k, t
  fi
}

/* -- What is pending is sent ---------------------------------------------------------------------- */

inline paid(s, k) {
  pending[s] = pending[s] & ~BIT(k);
  if :: s == EXPORTER -> before = before & ~BIT(k); thawIf() :: else fi
}
inline begin(s, k) {
  if
  :: IS_LONG(TEXT(s, k)) ->
     say(s, MORE, k, TEXT(s, k)); going[s] = k; rest[s] = TEXT(s, k)
  :: else ->
     say(s, LAST, k, TEXT(s, k)); paid(s, k)
  fi
}
inline goOn(s) {
  k_ = going[s];
  say(s, LAST, k_, rest[s]);
  going[s] = NOBODY; rest[s] = 0;
  paid(s, k_);
  k_ = 0
}
inline abort(s, k) { say(s, ABORT, k, 0); aborts[s] = aborts[s] & ~BIT(k) }

/* Rule 20, whole texts: a newer text takes the place of one that is under way, and the marker that says so
 * goes before anything else of the entity. */
#ifdef NO_ABORT_FIRST
#define CAN_BEGIN(s, k) (HAS_ROOM(s) && HAS(pending[s], k) && going[s] == NOBODY && !HAS(aborts[s], k))
#else
#define CAN_BEGIN(s, k) (HAS_ROOM(s) && HAS(pending[s], k) && going[s] == NOBODY && aborts[s] == 0)
#endif

/* -- Freeze, frozen, thaw: rules 4 to 8, as in chain.pml --------------------------------------- */

#ifdef SOFT /* Rule 12, soft */
#define TAKEN (stand == THAWED || stand == FREEZING)
#define HAS_TAKEN (stand != THAWED && stand != THAWING && stand != FREEZING)
#else
#define TAKEN (stand == THAWED)
#define HAS_TAKEN (stand != THAWED && stand != THAWING)
#endif
#ifdef NO_OPEN
#define CLOSES 1
#else
#define CLOSES (!TAKEN)
#endif
inline freeze() {
  if
  :: stand == THAWED ->
     stand = FREEZING;
#ifndef NO_CLOSE
     if
     :: CLOSES -> coming[EXPORTER] = NOBODY; part[EXPORTER] = 0 /* Rule 5, drop: what is half here is closed */
     :: else
     fi;
#endif
     say(EXPORTER, FREEZE, 0, 0)
  :: stand == THAWING -> stand = HELD; before = 0
  :: else
  fi
}
inline decide() { stand = THAWING; before = pending[EXPORTER]; thawIf() }
inline thawIf() {
  if :: stand == THAWING && before == 0 -> say(EXPORTER, THAW, 0, 0); stand = THAWED :: else fi
}

#ifdef NO_ANSWER_BEHIND_TEXTS
#define CAN_ANSWER (answers && (pending[MIRROR] & ~BIT(going[MIRROR])) == 0)
#else
#define CAN_ANSWER (answers && pending[MIRROR] == 0 && aborts[MIRROR] == 0)
#endif

/* -- What comes is applied --------------------------------------------------------------------- */

inline apply(s) {
  if
  :: m_ == MORE ->
     CLAIM(connection_holds, coming[s] == NOBODY || coming[s] == k_);
     CLAIM(texts_whole, coming[s] == NOBODY);
     coming[s] = k_; part[s] = t_
  :: m_ == LAST ->
     CLAIM(connection_holds, coming[s] == NOBODY || coming[s] == k_);
     CLAIM(texts_whole, (coming[s] == NOBODY && !IS_LONG(t_)) || (coming[s] == k_ && part[s] == t_));
     coming[s] = NOBODY; part[s] = 0;
     TEXT(s, k_) = t_
  :: m_ == ABORT ->
     if :: coming[s] == k_ -> coming[s] = NOBODY; part[s] = 0 :: else fi
  :: else
  fi
}
inline fromExporter() {
  sent[EXPORTER]?m_, k_, t_;
  TELL("mirror reads %e %d %d\n", m_, k_, t_);
  if
  :: m_ == SYNCED -> live = 1
  :: m_ == FREEZE -> frozen = 1; answers = 1
  :: m_ == THAW -> frozen = 0
  :: else -> apply(MIRROR)
  fi;
  m_ = 0; k_ = 0; t_ = 0
}
inline fromMirror() {
  sent[MIRROR]?m_, k_, t_;
  TELL("exporter reads %e %d %d\n", m_, k_, t_);
  if
  :: m_ == FROZEN -> stand = HELD
  :: m_ != FROZEN && TAKEN -> apply(EXPORTER)
  :: else -> /* Rule 5, drop: parts are dropped as they come, before anybody takes them for a text */
     CLAIM(silent_while_frozen, stand == FREEZING);
     pending[EXPORTER] = pending[EXPORTER] | BIT(k_) /* Rule 7, resend */
  fi;
  m_ = 0; k_ = 0; t_ = 0
}

/* -- Connections ------------------------------------------------------------------------------- */

inline down(s) {
  TELL("end %d learns of the cut\n", s);
  do :: len(sent[PEER(s)]) > 0 -> sent[PEER(s)]?_, _, _ :: else -> break od;
#ifndef NO_FORGOTTEN_PARTS
  coming[s] = NOBODY; part[s] = 0; /* Rule 20, whole texts: a part does not outlive its connection */
#endif
  connected[s] = 0; pending[s] = 0; going[s] = NOBODY; rest[s] = 0; aborts[s] = 0
}
inline exporterLearns() { down(EXPORTER); stand = GONE; before = 0 }
inline mirrorLearns() { down(MIRROR); live = 0; frozen = 1; answers = 0 }
inline connect() {
  TELL("connected\n");
  if :: connected[EXPORTER] -> exporterLearns() :: else fi;
  broken = 0; connected[EXPORTER] = 1; connected[MIRROR] = 1;
  stand = WALKED;
  pending[EXPORTER] = 3
}

/* -- Programs ---------------------------------------------------------------------------------- */

#define MAY(s, k) \
  (writes > 0 && (s == EXPORTER || !frozen) && \
   (owner[k] == s || (s == EXPORTER && HAS_TAKEN)))

inline write(s, k, long) {
  TELL("end %d writes %d = %d\n", s, k, next * 2 + long);
  writes--;
  TEXT(s, k) = next * 2 + long; next++;
  if
  :: connected[s] ->
     pending[s] = pending[s] | BIT(k);
     if
     :: going[s] == k ->
#ifndef NO_ABORT
        aborts[s] = aborts[s] | BIT(k);
#endif
        going[s] = NOBODY; rest[s] = 0
     :: else
     fi
  :: else
  fi
}

/* -- Who takes the steps ----------------------------------------------------------------------- */

proctype End(byte s) {
  end: do
  :: d_step { MAY(s, 0) -> write(s, 0, 0) }
  :: d_step { MAY(s, 0) -> write(s, 0, 1) }
  :: d_step { MAY(s, 1) -> write(s, 1, 0) }
  :: d_step { MAY(s, 1) -> write(s, 1, 1) }
  :: d_step { CAN_BEGIN(s, 0) -> begin(s, 0) }
  :: d_step { CAN_BEGIN(s, 1) -> begin(s, 1) }
  :: d_step { HAS_ROOM(s) && going[s] != NOBODY -> goOn(s) }
  :: d_step { HAS_ROOM(s) && HAS(aborts[s], 0) -> abort(s, 0) }
  :: d_step { HAS_ROOM(s) && HAS(aborts[s], 1) -> abort(s, 1) }
  od
}
proctype Exporter() {
  end: do
  :: d_step { connected[EXPORTER] && len(sent[MIRROR]) > 0 -> fromMirror() }
  :: d_step { stand == WALKED && pending[EXPORTER] == 0 -> say(EXPORTER, SYNCED, 0, 0); stand = HELD }
  :: d_step { granted && stand == HELD -> decide() }
  :: d_step { grants > 0 && granted -> TELL("withdrawn\n"); grants--; granted = 0; freeze() }
  :: d_step { !granted -> granted = 1 }
  :: d_step { connected[EXPORTER] && broken -> exporterLearns() }
  od
}
proctype Mirror() {
  end: do
  :: d_step { connected[MIRROR] && len(sent[EXPORTER]) > 0 -> fromExporter() }
  :: d_step { CAN_ANSWER -> answers = 0; say(MIRROR, FROZEN, 0, 0) }
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
  CLAIM(live_at_rest, coming[0] == NOBODY && coming[1] == NOBODY);
  CLAIM(equal_at_rest, TEXT(0, 0) == TEXT(1, 0) && TEXT(0, 1) == TEXT(1, 1))
}

init {
  atomic {
    if :: owner[0] = EXPORTER :: owner[0] = MIRROR fi;
    if :: owner[1] = EXPORTER :: owner[1] = MIRROR fi;
    connected[0] = 1; connected[1] = 1; live = 1; stand = THAWED; granted = 1;
    going[0] = NOBODY; going[1] = NOBODY; coming[0] = NOBODY; coming[1] = NOBODY;
    run End(EXPORTER); run End(MIRROR); run Exporter(); run Mirror(); run Calm()
  }
  timeout -> d_step { atRest() }
}
