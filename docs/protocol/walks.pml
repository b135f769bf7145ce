/* Two walks of one collection that cross, over a bare connection, which knows no freeze: either end walks
 * and either writes. A collection of two entries; end 0 exports the root, end 1 mirrors it.
 *
 * Rules and claims are told in README.md, by the same numbers and names; -DNO_... removes a rule.
 * Bounds: WALKS walks of each end, WRITES writes.
 */
#ifndef WALKS
#define WALKS 2
#endif
#ifndef WRITES
#define WRITES 2
#endif
#define KEYS 2
#ifndef WINDOW
#define WINDOW 5
#endif
#define ROOM (WINDOW + 1)
#define EXPORTER 0
#define MIRROR 1

#define BIT(k) (1 << (k))
#define HAS(set, k) (((set) >> (k)) & 1)
#define VALUE(s, k) value[(s) * KEYS + (k)]

hidden byte walks_end, nothing_unsent, equal_at_rest, room_is_enough;
#define CLAIM(name, what) assert(name || (what))

mtype = { BEGIN, PUT, END };

byte value[2 * KEYS];          /* 0: there is no such entry */
chan sent[2] = [ROOM] of { mtype, byte, byte };
bit asked[2];                  /* a walk is pending from its beginning */
byte walkAt[2];                /* 0: none is under way */
byte pending[2];
byte marked[2];
bit isOpen[2];                 /* between the peer's begin and end marker */
bit passes[2];                 /* the peer's walk is taken without its markers */

byte walks[2], writes = WRITES, next = 3;
bit owner[KEYS];
byte last[KEYS];
bit come[KEYS]; /* for the claim: the last write has come to the peer, or the peer's walk has replaced it */

hidden byte m_, k_, v_;

#ifdef TRACE
#define TELL(...) printf(__VA_ARGS__)
#else
#define TELL(...) skip
#endif

#define HAS_ROOM(s) (len(sent[s]) < WINDOW)
#define PEER(s) (1 - (s))

inline say(s, m, k, v) { CLAIM(room_is_enough, len(sent[s]) < ROOM); sent[s]!m, k, v }

inline walk(s) {
  TELL("end %d walks, step %d\n", s, walkAt[s]);
  if
  :: walkAt[s] == 0 -> asked[s] = 0; say(s, BEGIN, 0, 0); walkAt[s] = 1
  :: walkAt[s] > 0 && walkAt[s] <= KEYS ->
     if
     :: VALUE(s, walkAt[s] - 1) != 0 -> say(s, PUT, walkAt[s] - 1, VALUE(s, walkAt[s] - 1))
     :: else
     fi;
     if :: VALUE(s, walkAt[s] - 1) != 0 -> pending[s] = pending[s] & ~BIT(walkAt[s] - 1) :: else fi;
     walkAt[s]++
  :: walkAt[s] > KEYS -> say(s, END, 0, 0); walkAt[s] = 0
  fi
}
/* The gate: nothing of a collection is sent while the peer's walk of it is being received. */
#define CAN_WALK(s) (HAS_ROOM(s) && !isOpen[s] && (asked[s] || walkAt[s] != 0))
#define CAN_FLOW(s, k) (HAS_ROOM(s) && !isOpen[s] && walkAt[s] == 0 && !asked[s] && HAS(pending[s], k))

inline flow(s, k) { say(s, PUT, k, VALUE(s, k)); pending[s] = pending[s] & ~BIT(k) }

inline hear(s) {
  sent[PEER(s)]?m_, k_, v_;
  TELL("end %d reads %e %d %d\n", s, m_, k_, v_);
  if
  :: m_ == BEGIN ->
     if
#ifndef NO_EXPORTER_AHEAD
     :: s == EXPORTER && walkAt[s] != 0 -> passes[s] = 1 /* Rule 21, the exporter's walk goes ahead */
#endif
     :: else ->
        isOpen[s] = 1;
        marked[s] = (VALUE(s, 0) != 0) | ((VALUE(s, 1) != 0) << 1);
#ifndef NO_PENDING_UNMARKED
        marked[s] = marked[s] & ~pending[s] /* Rule 22, written between: the peer cannot have walked what it has not got */
#endif
     fi
  :: m_ == PUT ->
     VALUE(s, k_) = v_;
     marked[s] = marked[s] & ~BIT(k_);
     if :: v_ == last[k_] || owner[k_] == s -> come[k_] = 1 :: else fi
  :: m_ == END ->
     if :: !passes[s] && HAS(marked[s], 0) -> VALUE(s, 0) = 0 :: else fi;
     if :: !passes[s] && HAS(marked[s], 1) -> VALUE(s, 1) = 0 :: else fi;
     marked[s] = 0; isOpen[s] = 0; passes[s] = 0
  fi;
  m_ = 0; k_ = 0; v_ = 0
}

inline write(s, k) {
  TELL("end %d writes %d = %d\n", s, k, next);
  writes--;
  VALUE(s, k) = next; last[k] = next; come[k] = 0; next++;
  /* Rule 22, written between markers: it stands, and is pending behind the end marker. */
#ifdef NO_PENDING_BEHIND
  if :: !isOpen[s] -> pending[s] = pending[s] | BIT(k) :: else fi;
#else
  pending[s] = pending[s] | BIT(k);
#endif
#ifndef NO_UNMARK
  marked[s] = marked[s] & ~BIT(k)
#endif
}

proctype End(byte s) {
  end: do
  :: d_step { walks[s] > 0 && !asked[s] && walkAt[s] == 0 -> walks[s]--; asked[s] = 1 }
  :: d_step { CAN_WALK(s) -> walk(s) }
  :: d_step { CAN_FLOW(s, 0) -> flow(s, 0) }
  :: d_step { CAN_FLOW(s, 1) -> flow(s, 1) }
  :: d_step { len(sent[PEER(s)]) > 0 -> hear(s) }
  :: d_step { writes > 0 && owner[0] == s -> write(s, 0) }
  :: d_step { writes > 0 && owner[1] == s -> write(s, 1) }
  od
}

/* Whatever is left of the bounds may be left out from any moment on: what is claimed of rest is claimed of
 * each moment at which writes and walks may end. */
proctype Calm() { d_step { writes = 0; walks[0] = 0; walks[1] = 0 } }

inline atRest() {
  CLAIM(walks_end, !asked[0] && !asked[1] && walkAt[0] == 0 && walkAt[1] == 0);
  CLAIM(walks_end, pending[0] == 0 && pending[1] == 0 && !isOpen[0] && !isOpen[1]);
  CLAIM(nothing_unsent, come[0] && come[1]);
#if WRITES == 0
  CLAIM(equal_at_rest, VALUE(0, 0) == VALUE(1, 0) && VALUE(0, 1) == VALUE(1, 1))
#endif
}

init {
  atomic {
    if :: owner[0] = EXPORTER :: owner[0] = MIRROR fi;
    if :: owner[1] = EXPORTER :: owner[1] = MIRROR fi;
    if :: VALUE(0, 0) = 1; VALUE(1, 0) = 1 :: skip fi;
    if :: VALUE(0, 1) = 2; VALUE(1, 1) = 2 :: skip fi;
    come[0] = 1; come[1] = 1;
    walks[0] = WALKS; walks[1] = WALKS;
    run End(EXPORTER); run End(MIRROR); run Calm()
  }
  timeout -> d_step { atRest() }
}
