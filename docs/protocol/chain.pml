/* The right to write along a chain: an original A, its mirror B, and mirrors C (and D) of B.
 *
 *     A = node 0  <- link 0 -  B = node 1  <- link 1 -  C = node 2,    B  <- link 2 -  D = node 3
 *
 * Link l ties the mirror l + 1 to its exporter. The rules are those of README.md, by the same numbers
 * and names; -DNO_... removes one. The claims are told there too. Each
 * step is atomic, as in a program of one thread; between two of them may lie any others.
 *
 * Bounds: LINKS links, 2 keys, WRITES writes, CUTS cuts, GRANTS withdrawals of a grant, ECHOES questions.
 * Whatever is left of them may be left out from any moment on.
 * Variants: SOFT: withdrawals take what crosses; OWNERS: any node may be a key's writer.
 */
#ifndef LINKS
#define LINKS 2
#endif
#ifndef WRITES
#define WRITES 2
#endif
#ifndef CUTS
#define CUTS 1
#endif
#ifndef GRANTS
#define GRANTS 1
#endif
#ifndef ECHOES
#define ECHOES 0
#endif
#define NODES (LINKS + 1)
#define KEYS 2
#define ROOM 9 /* records on the way in one direction: more than there ever are */

#define BIT(k) (1 << (k))
#define HAS(set, k) (((set) >> (k)) & 1)
#define EXPORTER(l) ((l) == 0 -> 0 : 1)
#define MIRROR(l) ((l) + 1)
#define VALUE(n, k) value[(n) * KEYS + (k)]

/* Claims. A name is a variable that stays 0, so that Spin prints it with a claim that does not hold. */
hidden byte equal_at_rest, live_at_rest, no_write_lost, fix_only_if_frozen, silent_while_frozen,
    applied_only_if_writable, one_freeze_at_a_time, thawed_only_if_live, room_is_enough, echo_is_true,
    echo_is_answered;
#define CLAIM(name, what) assert(name || (what))

/* Down: BEGIN, SET, FIX (a repair), END, FREEZE, THAW, ECHO. Up: SET, FROZEN, ASK. */
mtype = { BEGIN, SET, FIX, END, FREEZE, THAW, FROZEN, ASK, ECHO };
/* How a mirror stands at its exporter, and whether it may write: only while it is THAWED. */
mtype = { GONE, WALKED, HELD, THAWING, THAWED, FREEZING };

byte value[NODES * KEYS]; /* 0: there is no such entry */

chan down[LINKS] = [ROOM] of { mtype, byte, byte };
chan up[LINKS] = [ROOM] of { mtype, byte, byte };
bit broken[LINKS];  /* cut: what is sent from now on is lost */

/* The exporter's end of a link. Sets of keys are bits. */
bit exporterUp[LINKS];
mtype stand[LINKS];
byte walkAt[LINKS];
byte pending[LINKS];     /* marks: what is pending is sent later, as it stands then, once */
byte fixes[LINKS];    /* those among them that repair */
byte before[LINKS];   /* what was pending when the thaw was decided, and still is */
byte counted[LINKS];  /* dropped, and not told yet: a number in the product, here which keys */
byte rounds[LINKS];
bit granted[LINKS];

/* The mirror's end. */
bit mirrorUp[LINKS];
bit live[LINKS];
bit frozen[LINKS];
bit answers[LINKS];   /* pending frozen(n) */
byte round[LINKS];
byte marked[LINKS];   /* to be swept at the end of the walk */
byte pendingUp[LINKS];

byte writes = WRITES, cuts = CUTS, grants = GRANTS, next = 2;
byte owner[KEYS];     /* the one writing side */

/* For the claims alone: the last write of each key, whose it was, and whether its writer has notified. */
byte last[KEYS], writer[KEYS];
bit notified[KEYS];

#if ECHOES > 0
#define NOBODY 9
#define CUT BIT(KEYS)
byte echoes = ECHOES;
/* The exporter's. */
bit passed[LINKS];      /* a write of this mirror has been applied here since its last question */
bit inDoubt[LINKS];     /* what was passed has met a cut, and that is not told yet */
/* The mirror's: its questions, before and after they were sent. Who asks, 0 the program and else a link
 * downstream; which question; what the program has been told since. */
chan asking[LINKS] = [ECHOES] of { byte, byte, bit };
chan asked[LINKS] = [ECHOES] of { byte, byte, bit };
byte askBehind[LINKS];  /* what was pending when the last question came, and still is */
bit told[LINKS];        /* something has gone wrong, and no answer has told the program */
/* For the claims alone: for each question, the writes that it is about. */
byte about[ECHOES];
bit untold[KEYS];       /* no answer has told the writer that something went wrong */
byte unanswered;
hidden byte w_, q_;
hidden byte t_;
#endif

hidden byte k_, v_, i_;
hidden mtype m_;
hidden byte fix_;

#ifdef NO_SESSION_END
chan former[LINKS] = [ROOM] of { mtype, byte, byte };
bit formerUp[LINKS];
mtype formerStand[LINKS];
#endif
#if defined(NO_FREEZE_FIRST) || defined(NO_DROP_AT_DECISION)
bit unsaid[LINKS]; /* a freeze that is decided waits for room */
#endif
#ifdef NO_FROZEN_WALK
byte again = 1;  /* a walk that is asked for */
#endif
#ifdef SOFT
bit takes[LINKS];  /* what crosses this freeze is taken */
#endif

#ifdef TRACE
#define TELL(...) printf(__VA_ARGS__)
#else
#define TELL(...) skip
#endif

/* -- What is sent, and what is pending ------------------------------------------------------------ */

inline sayDown(l, m, k, v) {
  if
  :: broken[l] -> skip
  :: else -> CLAIM(room_is_enough, len(down[l]) < ROOM); down[l]!m, k, v
  fi
}

inline sayUp(l, m, k, v) {
  if
  :: broken[l] -> skip
  :: else -> CLAIM(room_is_enough, len(up[l]) < ROOM); up[l]!m, k, v
  fi
}

inline markDown(l, k, fix) {
  if
  :: stand[l] != GONE -> pending[l] = pending[l] | BIT(k); fixes[l] = fixes[l] | ((fix) << (k))
  :: else
  fi
}

/* To all who mirror node n, but over `link`. */
inline spreadDown(n, k, fix, link) {
  if
  :: (n) == 0 && (link) != 0 -> markDown(0, k, fix)
#if LINKS > 1
  :: (n) == 1 ->
     if :: (link) != 1 -> markDown(1, k, fix) :: else fi;
#if LINKS > 2
     if :: (link) != 2 -> markDown(2, k, fix) :: else fi
#endif
#endif
  :: else
  fi
}

inline spreadUp(n, k) {
  if :: (n) > 0 -> pendingUp[(n) - 1] = pendingUp[(n) - 1] | BIT(k) :: else fi
}

inline flowDown(l, k) {
  TELL("link %d: exporter sends key %d = %d, repair %d\n", l, k, VALUE(EXPORTER(l), k), HAS(fixes[l], k));
  if
  :: HAS(fixes[l], k) -> sayDown(l, FIX, k, VALUE(EXPORTER(l), k))
  :: else -> sayDown(l, SET, k, VALUE(EXPORTER(l), k))
  fi;
  pending[l] = pending[l] & ~BIT(k);
  fixes[l] = fixes[l] & ~BIT(k);
  before[l] = before[l] & ~BIT(k);
  thawIf(l)
}

inline flowUp(l, k) {
  TELL("link %d: mirror sends key %d = %d\n", l, k, VALUE(MIRROR(l), k));
  pendingUp[l] = pendingUp[l] & ~BIT(k);
  sayUp(l, SET, k, VALUE(MIRROR(l), k))
#if ECHOES > 0
  ; askBehind[l] = askBehind[l] & ~BIT(k)
#endif
}

/* -- Freeze, frozen, thaw ---------------------------------------------------------------------- */

/* Rule 4, freeze: who may not write itself, or withdraws the grant, says so before all that it pending. */
inline freeze(l, soft) {
  if
  :: stand[l] == THAWED ->
     stand[l] = FREEZING;
     rounds[l]++;
#ifdef SOFT
     takes[l] = soft;
#endif
#if defined(NO_FREEZE_FIRST) || defined(NO_DROP_AT_DECISION)
     unsaid[l] = 1
#else
     sayDown(l, FREEZE, soft, rounds[l])
#endif
  :: stand[l] == THAWING -> stand[l] = HELD; before[l] = 0 /* not sent yet: it is frozen still */
  :: else ->
#ifdef SOFT
     if :: !(soft) -> takes[l] = 0 :: else fi
#else
     skip
#endif
  fi;
#ifdef NO_SESSION_END
  if :: formerStand[l] == THAWED -> formerStand[l] = FREEZING :: else fi
#endif
}

inline freezeDownstream(n, soft) {
#if LINKS > 1
  if
  :: (n) == 1 ->
     freeze(1, soft);
#if LINKS > 2
     freeze(2, soft)
#endif
  :: else
  fi
#else
  skip
#endif
}

/* Rule 10, thaw downstream: the middle thaws those downstream when it is thawed itself. */
#ifdef NO_THAW_DOWN
#define MAY_THAW(l) (EXPORTER(l) == 0 || live[EXPORTER(l) - 1])
#else
#define MAY_THAW(l) (EXPORTER(l) == 0 || !frozen[EXPORTER(l) - 1])
#endif

/* Rule 8, thaw behind: behind the answer, and behind all that was pending at the decision. */
#ifdef NO_WAIT
#define CAN_DECIDE(l) (granted[l] && MAY_THAW(l) && (stand[l] == HELD || stand[l] == FREEZING))
#else
#define CAN_DECIDE(l) (granted[l] && MAY_THAW(l) && stand[l] == HELD)
#endif

inline decide(l) {
  TELL("link %d: thaw decided\n", l);
  stand[l] = THAWING;
#ifndef NO_THAW_BEHIND
  before[l] = pending[l];
#endif
  thawIf(l)
}

inline thawIf(l) {
  if
  :: stand[l] == THAWING && before[l] == 0 ->
     TELL("link %d: thaw sent\n", l);
     sayDown(l, THAW, counted[l], rounds[l]);
     counted[l] = 0;
     stand[l] = THAWED
  :: else
  fi
}

/* -- Records that come down -------------------------------------------------------------------- */

inline store(n, k, v, fix, link) {
  if :: VALUE(n, k) != v -> VALUE(n, k) = v; spreadDown(n, k, fix, link) :: else fi
}

/* Rule 11, count: a mirror is told that so much has been dropped, by a thaw or by an answer. */
inline hear(l, keys) {
  if :: HAS(keys, 0) && writer[0] == MIRROR(l) -> notified[0] = 1 :: else fi;
  if :: HAS(keys, 1) && writer[1] == MIRROR(l) -> notified[1] = 1 :: else fi;
#if LINKS > 1 && !defined(NO_COUNT_DOWN)
  if
  :: (l) == 0 -> /* and those downstream are */
     if :: stand[1] != GONE -> counted[1] = counted[1] | (keys) :: else fi;
#if LINKS > 2
     if :: stand[2] != GONE -> counted[2] = counted[2] | (keys) :: else fi
#endif
  :: else
  fi
#else
  skip
#endif
#if ECHOES > 0
  ; if :: (keys) != 0 -> tell(l) :: else fi
#endif
}

#if ECHOES > 0
/* -- Rule 23, answer from the owner ------------------------------------------------------------- */

/* The program is told by the answers to its questions under way, or to the next. */
inline tell(l) {
#ifndef NO_TOLD
  told[l] = 1;
  for (i_ : 1 .. len(asking[l])) { asking[l]?w_, q_, t_; asking[l]!w_, q_, (w_ == 0 || t_) }
  for (i_ : 1 .. len(asked[l])) { asked[l]?w_, q_, t_; asked[l]!w_, q_, (w_ == 0 || t_) }
  w_ = 0; q_ = 0; t_ = 0; i_ = 0
#else
  skip
#endif
}

/* The program's question is answered. */
inline answered(n, q, bad) {
  TELL("node %d: question %d is answered %d\n", n, q, bad);
  unanswered--;
  CLAIM(echo_is_true, (bad) || !HAS(about[q], 0) || VALUE(0, 0) == last[0]);
  CLAIM(echo_is_true, (bad) || !HAS(about[q], 1) || VALUE(0, 1) == last[1]);
  about[q] = 0;
  if :: (bad) -> told[(n) - 1] = 0 :: else fi;
  if :: (bad) && writer[0] == n -> untold[0] = 0 :: else fi;
  if :: (bad) && writer[1] == n -> untold[1] = 0 :: else fi
}

inline answerDown(l, q) {
  sayDown(l, ECHO, q, counted[l] | (inDoubt[l] * CUT));
  counted[l] = 0; inDoubt[l] = 0
}

inline ask(link, who, question) {
  asking[link]!who, question, ((who) == 0 && told[link]);
  askBehind[link] = pendingUp[link]
}

#ifdef NO_ASK_BEHIND
#define CAN_ASK(l) (len(asking[l]) > 0)
#else
#define CAN_ASK(l) (len(asking[l]) > 0 && askBehind[l] == 0)
#endif
inline flowAsk(l) {
  asking[l]?w_, q_, t_;
  asked[l]!w_, q_, t_;
  sayUp(l, ASK, q_, 0);
  w_ = 0; q_ = 0; t_ = 0
}

/* A question from link l has come to its exporter. */
inline askRead(l, q) {
  passed[l] = 0;
  if
#ifdef NO_OWNER
  :: 1 -> answerDown(l, q)
#else
  :: EXPORTER(l) == 0 -> answerDown(l, q)
  :: EXPORTER(l) != 0 && mirrorUp[0] -> ask(0, l, q)
  :: EXPORTER(l) != 0 && !mirrorUp[0] -> inDoubt[l] = 1; answerDown(l, q)
#endif
  fi
}

/* An answer has come to the mirror. */
inline echoRead(l, q, bad) {
  hear(l, (bad) & (CUT - 1));
  if :: (bad) & CUT -> tell(l) :: else fi;
  asked[l]?w_, q_, t_;
  if
  :: w_ == 0 -> answered(MIRROR(l), q, (t_ || (bad) != 0))
#if LINKS > 1
  :: w_ == 1 -> answerDown(1, q)
#endif
#if LINKS > 2
  :: w_ == 2 -> answerDown(2, q)
#endif
  :: else
  fi;
  w_ = 0; q_ = 0; t_ = 0
}

/* The connection upstream has gone. */
inline refuseAnswer(l) {
  if
  :: w_ == 0 -> answered(MIRROR(l), q_, 1)
#if LINKS > 1
  :: w_ == 1 -> inDoubt[1] = 1; passed[1] = 0; answerDown(1, q_)
#endif
#if LINKS > 2
  :: w_ == 2 -> inDoubt[2] = 1; passed[2] = 0; answerDown(2, q_)
#endif
  :: else
  fi
}
inline doubt(l) {
#ifndef NO_DOUBT
  if :: passed[l] -> inDoubt[l] = 1; passed[l] = 0 :: else fi
#else
  skip
#endif
}
inline doubtAnswers(l) {
  do :: len(asked[l]) > 0 -> asked[l]?w_, q_, t_; refuseAnswer(l) :: else -> break od;
  do :: len(asking[l]) > 0 -> asking[l]?w_, q_, t_; refuseAnswer(l) :: else -> break od;
  w_ = 0; q_ = 0; t_ = 0;
  askBehind[l] = 0; told[l] = 0;
  if :: writer[0] == MIRROR(l) -> untold[0] = 0 :: else fi;
  if :: writer[1] == MIRROR(l) -> untold[1] = 0 :: else fi;
#if LINKS > 1
  if :: (l) == 0 -> doubt(1) :: else fi;
#endif
#if LINKS > 2
  if :: (l) == 0 -> doubt(2) :: else fi
#else
  skip
#endif
}

/* The connection from downstream has gone: nobody waits for these answers. */
inline forgetQuestions(l) {
  passed[l] = 0; inDoubt[l] = 0;
  for (i_ : 1 .. len(asking[0])) { asking[0]?w_, q_, t_; asking[0]!(w_ == l && w_ != 0 -> NOBODY : w_), q_, t_ }
  for (i_ : 1 .. len(asked[0])) { asked[0]?w_, q_, t_; asked[0]!(w_ == l && w_ != 0 -> NOBODY : w_), q_, t_ }
  w_ = 0; q_ = 0; t_ = 0; i_ = 0
}
#endif

inline fromExporter(l) {
  down[l]?m_, k_, v_;
  TELL("link %d: mirror reads %e %d %d\n", l, m_, k_, v_);
  if
  :: m_ == BEGIN ->
     marked[l] = (VALUE(MIRROR(l), 0) != 0) | ((VALUE(MIRROR(l), 1) != 0) << 1)
  :: m_ == SET || m_ == FIX ->
     fix_ = (m_ == FIX);
     CLAIM(fix_only_if_frozen, !fix_ || frozen[l]);
     marked[l] = marked[l] & ~BIT(k_);
     store(MIRROR(l), k_, v_, fix_, 9)
  :: m_ == END ->
     if :: HAS(marked[l], 0) -> store(MIRROR(l), 0, 0, 1, 9) :: else fi;
     if :: HAS(marked[l], 1) -> store(MIRROR(l), 1, 0, 1, 9) :: else fi;
     marked[l] = 0;
     live[l] = 1;
#ifdef NO_FROZEN_UNTIL_THAW
     frozen[l] = 0;
#endif
  :: m_ == FREEZE ->
     CLAIM(one_freeze_at_a_time, !answers[l]);
     frozen[l] = 1; answers[l] = 1; round[l] = v_;
#ifndef NO_FREEZE_DOWN
     freezeDownstream(MIRROR(l), k_) /* Rule 9, freeze downstream */
#endif
  :: m_ == THAW ->
     CLAIM(thawed_only_if_live, live[l] && !answers[l] && v_ == round[l]);
     frozen[l] = 0;
     hear(l, k_)
#if ECHOES > 0
  :: m_ == ECHO -> echoRead(l, k_, v_)
#endif
  fi;
  m_ = 0; k_ = 0; v_ = 0; fix_ = 0
}

/* -- Records that come up ---------------------------------------------------------------------- */

#define IS_ON(l, k) (HAS(pendingUp[l], k) || up[l]??[SET, eval(k), _])
#if LINKS == 1
#define IS_UNDER_WAY(k) IS_ON(0, k)
#elif LINKS == 2
#define IS_UNDER_WAY(k) (IS_ON(0, k) || IS_ON(1, k))
#else
#define IS_UNDER_WAY(k) (IS_ON(0, k) || IS_ON(1, k) || IS_ON(2, k))
#endif
#if ECHOES > 0
inline notAbout(k) { for (i_ : 0 .. ECHOES - 1) { about[i_] = about[i_] & ~BIT(k) } i_ = 0 }
#else
#define notAbout(k) skip
#endif
#define COMES_DOWN(k) (HAS(pending[0], k) || down[0]??[SET, eval(k), _] || down[0]??[FIX, eval(k), _])

inline apply(l) {
  if
  :: VALUE(EXPORTER(l), k_) != v_ ->
     VALUE(EXPORTER(l), k_) = v_;
     spreadUp(EXPORTER(l), k_);
     spreadDown(EXPORTER(l), k_, 0, l)
#if ECHOES > 0
     ; passed[l] = EXPORTER(l) != 0
#endif
  :: else ->
     /* It changes nothing here, and goes no further. What the original has written meanwhile comes here
      * behind it, and so is the later write. */
     if
     :: (l) > 0 && v_ == last[k_] && !IS_UNDER_WAY(k_) && !broken[0] && COMES_DOWN(k_) ->
        last[k_] = VALUE(0, k_); writer[k_] = 0; notAbout(k_)
     :: else
     fi
  fi
}

#if defined(NO_DROP)
#define TAKEN(l) 1
#elif defined(NO_FROZEN_WALK)
#define TAKEN(l) (stand[l] == THAWED || stand[l] == WALKED)
#elif defined(NO_DROP_AT_DECISION)
#define TAKEN(l) (stand[l] == THAWED || unsaid[l])
#elif defined(SOFT)
#define TAKEN(l) (stand[l] == THAWED || (stand[l] == FREEZING && takes[l]))
#else
#define TAKEN(l) (stand[l] == THAWED)
#endif

inline fromMirror(l) {
  up[l]?m_, k_, v_;
  TELL("link %d: exporter reads %e %d %d\n", l, m_, k_, v_);
  if
  :: m_ == FROZEN ->
     CLAIM(one_freeze_at_a_time, stand[l] == FREEZING && v_ == rounds[l]);
     stand[l] = HELD
  :: m_ == SET && TAKEN(l) ->
#ifdef SOFT
     CLAIM(applied_only_if_writable, EXPORTER(l) == 0 || !frozen[EXPORTER(l) - 1] || stand[l] == FREEZING);
     CLAIM(applied_only_if_writable, EXPORTER(l) == 0 || live[EXPORTER(l) - 1]);
#else
     CLAIM(applied_only_if_writable, EXPORTER(l) == 0 || !frozen[EXPORTER(l) - 1]);
#endif
     apply(l)
  :: m_ == SET && !TAKEN(l) ->
     CLAIM(silent_while_frozen, stand[l] == FREEZING);
     /* Rule 5, drop. */
#ifndef NO_COUNT
     counted[l] = counted[l] | BIT(k_); /* Rule 11, count */
#endif
#ifndef NO_RESEND
     markDown(l, k_, 1) /* Rule 7, resend */
#endif
#if ECHOES > 0
  :: m_ == ASK -> askRead(l, k_)
#endif
  fi;
  m_ = 0; k_ = 0; v_ = 0
}

/* Rule 6, answer behind: frozen(n) goes behind all that is pending. Rule 12, soft: and behind the answers from
 * downstream, whose writes are taken up to then. */
#if LINKS > 2
#define NONE_DOWNSTREAM_FREEZES (stand[1] != FREEZING && stand[2] != FREEZING)
#elif LINKS > 1
#define NONE_DOWNSTREAM_FREEZES (stand[1] != FREEZING)
#else
#define NONE_DOWNSTREAM_FREEZES 1
#endif
#if defined(NO_ANSWER_BEHIND)
#define CAN_ANSWER(l) (mirrorUp[l] && answers[l])
#elif defined(SOFT) && !defined(NO_SOFT_WAIT)
#define CAN_ANSWER(l) (mirrorUp[l] && answers[l] && pendingUp[l] == 0 && ((l) != 0 || NONE_DOWNSTREAM_FREEZES))
#else
#define CAN_ANSWER(l) (mirrorUp[l] && answers[l] && pendingUp[l] == 0)
#endif
inline answer(l) {
  TELL("link %d: mirror answers\n", l);
  answers[l] = 0;
  sayUp(l, FROZEN, 0, round[l])
}

/* -- Rule 14, walk frozen: nothing walks a root that the mirror may write ---------------------- */

inline walk(l) {
  TELL("link %d: walk, step %d\n", l, walkAt[l]);
  if
  :: walkAt[l] == 0 -> sayDown(l, BEGIN, 0, 0); walkAt[l] = 1
  :: walkAt[l] > 0 && walkAt[l] <= KEYS ->
     if
     :: VALUE(EXPORTER(l), walkAt[l] - 1) != 0 ->
        sayDown(l, FIX, walkAt[l] - 1, VALUE(EXPORTER(l), walkAt[l] - 1));
        pending[l] = pending[l] & ~BIT(walkAt[l] - 1)
     :: else
     fi;
     walkAt[l]++
  :: walkAt[l] > KEYS ->
     sayDown(l, END, 0, 0);
     walkAt[l] = 0;
     fixes[l] = pending[l];
     stand[l] = HELD
  fi
}

/* -- Connections ------------------------------------------------------------------------------- */

inline cut(l) { TELL("link %d: cut\n", l); cuts--; broken[l] = 1 }

inline exporterLearns(l) { /* that the connection has gone; what it has not read it never reads */
  TELL("link %d: exporter learns of the cut\n", l);
  do :: len(up[l]) > 0 -> up[l]?_, _, _ :: else -> break od;
  exporterUp[l] = 0; stand[l] = GONE; walkAt[l] = 0;
  pending[l] = 0; fixes[l] = 0; before[l] = 0; counted[l] = 0; rounds[l] = 0
#ifdef SOFT
  ; takes[l] = 0
#endif
#if defined(NO_FREEZE_FIRST) || defined(NO_DROP_AT_DECISION)
  ; unsaid[l] = 0
#endif
#if ECHOES > 0
  ; forgetQuestions(l)
#endif
}

/* Whose mount goes stale before the write has come to the root's owner has notified. */
inline doubtful(l, k) {
  if :: writer[k] > (l) && (VALUE(0, k) != last[k] || IS_UNDER_WAY(k)) -> notified[k] = 1 :: else fi
}

inline mirrorLearns(l) {
  TELL("link %d: mirror learns of the cut\n", l);
  do :: len(down[l]) > 0 -> down[l]?_, _, _ :: else -> break od;
  doubtful(l, 0);
  doubtful(l, 1);
  mirrorUp[l] = 0; live[l] = 0; answers[l] = 0; round[l] = 0; marked[l] = 0; pendingUp[l] = 0;
#ifndef NO_FROZEN_WHEN_STALE
  frozen[l] = 1; /* Rule 2, frozen unless thawed */
#endif
#ifndef NO_FREEZE_AT_CUT
  freezeDownstream(MIRROR(l), 0) /* Rule 9, freeze downstream */
#endif
#if ECHOES > 0
  ; doubtAnswers(l)
#endif
}

inline connect(l) {
  TELL("link %d: connected\n", l);
  if
  :: exporterUp[l] -> /* Rule 13, one session: the former one ends here, unread */
#ifdef NO_SESSION_END
     formerUp[l] = 1; formerStand[l] = stand[l];
     do :: len(up[l]) > 0 -> up[l]?m_, k_, v_; former[l]!m_, k_, v_ :: else -> break od;
     m_ = 0; k_ = 0; v_ = 0;
#endif
     exporterLearns(l)
  :: else
  fi;
  broken[l] = 0; exporterUp[l] = 1; mirrorUp[l] = 1;
  stand[l] = WALKED
}

#ifdef NO_SESSION_END
#define CAN_CONNECT(l) (!mirrorUp[l] && !formerUp[l])
inline fromFormer(l) {
  former[l]?m_, k_, v_;
  TELL("link %d: exporter reads of the former session %e %d %d\n", l, m_, k_, v_);
  if
  :: m_ == SET && formerStand[l] == THAWED -> apply(l)
  :: else
  fi;
  m_ = 0; k_ = 0; v_ = 0
}
inline formerEnds(l) {
  do :: len(former[l]) > 0 -> former[l]?_, _, _ :: else -> break od;
  formerUp[l] = 0; formerStand[l] = 0
}
#else
#define CAN_CONNECT(l) (!mirrorUp[l])
#endif

/* -- Programs ---------------------------------------------------------------------------------- */

/* Rule 1, refuse: a program at a frozen mirror is refused before anything is written. */
#ifdef NO_REFUSE
#define WRITABLE(n) 1
#else
#define WRITABLE(n) ((n) == 0 || !frozen[(n) - 1])
#endif

/* Rule 3, one writer: each key is written by its owner; before it in the chain, by who has taken the
 * right to write, up to the moment in which the thaw is decided. */
#define LINK_TO(n, o) ((n) == 0 -> 0 : (o) - 1)
#define IS_BEFORE(n, o) ((n) < (o) && (n) < 2)
#if defined(NO_HANDOVER)
#define HAS_TAKEN(l) (stand[l] != THAWED)
#elif defined(SOFT)
#define HAS_TAKEN(l) (stand[l] == GONE || stand[l] == WALKED || stand[l] == HELD)
#else
#define HAS_TAKEN(l) (stand[l] != THAWED && stand[l] != THAWING)
#endif
#ifdef NO_ONE_WRITER
#define IS_WRITER(n, k) 1
#else
#define IS_WRITER(n, k) (owner[k] == (n) || (IS_BEFORE(n, owner[k]) && HAS_TAKEN(LINK_TO(n, owner[k]))))
#endif

#define MAY_WRITE(n, k) (writes > 0 && WRITABLE(n) && IS_WRITER(n, k))

inline write(n, k, v) {
  TELL("node %d writes key %d = %d\n", n, k, v);
  writes--;
  VALUE(n, k) = v;
  last[k] = v; writer[k] = n; notified[k] = 0;
#if ECHOES > 0
  untold[k] = 1;
  notAbout(k);
#endif
  spreadUp(n, k);
  spreadDown(n, k, 0, 9)
}

#if ECHOES > 0
inline askHere(n) {
  echoes--;
  TELL("node %d asks %d\n", n, echoes);
  unanswered++;
  about[echoes] = (writer[0] == n && untold[0]) | ((writer[1] == n && untold[1]) << 1);
  ask((n) - 1, 0, echoes)
}
#endif

inline withdraw(l) {
  TELL("link %d: grant withdrawn\n", l);
  grants--;
  granted[l] = 0;
#ifdef SOFT
  freeze(l, 1)
#else
  freeze(l, 0)
#endif
}

#ifdef NO_DROP_AT_DECISION
#define CAN_FLOW(l) (stand[l] != WALKED && !unsaid[l])
#else
#define CAN_FLOW(l) (stand[l] != WALKED)
#endif

/* -- Who takes the steps ----------------------------------------------------------------------- */

proctype Program(byte n) {
  end: do
  :: d_step { MAY_WRITE(n, 0) -> write(n, 0, next); next++ }
  :: d_step { MAY_WRITE(n, 1) -> write(n, 1, next); next++ }
  :: d_step { MAY_WRITE(n, 0) && VALUE(n, 0) != 0 -> write(n, 0, 0) }
  :: d_step { MAY_WRITE(n, 1) && VALUE(n, 1) != 0 -> write(n, 1, 0) }
#if ECHOES > 0
  :: d_step { echoes > 0 && n > 0 && mirrorUp[n - 1] -> askHere(n) }
#endif
  od
}

proctype Exporter(byte l) {
  end: do
  :: d_step { exporterUp[l] && len(up[l]) > 0 -> fromMirror(l) }
  :: d_step { stand[l] == WALKED -> walk(l) }
  :: d_step { CAN_FLOW(l) && HAS(pending[l], 0) -> flowDown(l, 0) }
  :: d_step { CAN_FLOW(l) && HAS(pending[l], 1) -> flowDown(l, 1) }
  :: d_step { CAN_DECIDE(l) -> decide(l) }
  :: d_step { grants > 0 && granted[l] -> withdraw(l) }
  :: d_step { !granted[l] -> granted[l] = 1 }
  :: d_step { exporterUp[l] && broken[l] -> exporterLearns(l) }
#if defined(NO_FREEZE_FIRST) || defined(NO_DROP_AT_DECISION)
  :: d_step { unsaid[l] -> unsaid[l] = 0; sayDown(l, FREEZE, 0, rounds[l]) }
#endif
#ifdef NO_FROZEN_WALK
  :: d_step { stand[l] == THAWED && again > 0 -> again--; stand[l] = WALKED }
#endif
#ifdef NO_SESSION_END
  :: d_step { formerUp[l] && len(former[l]) > 0 -> fromFormer(l) }
  :: d_step { formerUp[l] -> formerEnds(l) }
#endif
  od
}

proctype Mirror(byte l) {
  end: do
  :: d_step { mirrorUp[l] && len(down[l]) > 0 -> fromExporter(l) }
  :: d_step { CAN_ANSWER(l) -> answer(l) }
  :: d_step { HAS(pendingUp[l], 0) -> flowUp(l, 0) }
  :: d_step { HAS(pendingUp[l], 1) -> flowUp(l, 1) }
#if ECHOES > 0
  :: d_step { CAN_ASK(l) -> flowAsk(l) }
#endif
  :: d_step { cuts > 0 && !broken[l] -> cut(l) }
  :: d_step { mirrorUp[l] && broken[l] -> mirrorLearns(l) }
  :: d_step { CAN_CONNECT(l) -> connect(l) }
  od
}

/* -- At rest ----------------------------------------------------------------------------------- */

/* Whatever is left of the bounds may be left out from any moment on: what is claimed of rest is claimed of
 * each moment at which writes and faults may end. */
proctype Calm() {
#if ECHOES > 0
  d_step { writes = 0; cuts = 0; grants = 0; echoes = 0 }
#else
  d_step { writes = 0; cuts = 0; grants = 0 }
#endif
}

inline atRest() {
  for (i_ : 0 .. LINKS - 1) {
    CLAIM(live_at_rest, exporterUp[i_] && mirrorUp[i_] && live[i_] && stand[i_] == THAWED && !frozen[i_]);
    CLAIM(equal_at_rest, VALUE(EXPORTER(i_), 0) == VALUE(MIRROR(i_), 0) && VALUE(EXPORTER(i_), 1) == VALUE(MIRROR(i_), 1))
  }
  CLAIM(no_write_lost, VALUE(0, 0) == last[0] || notified[0]);
  CLAIM(no_write_lost, VALUE(0, 1) == last[1] || notified[1]);
#if ECHOES > 0
  CLAIM(echo_is_answered, unanswered == 0);
#endif
#if defined(SOFT) && CUTS == 0
  CLAIM(no_write_lost, !notified[0] && !notified[1]);
#endif
}

init {
  atomic {
    for (i_ : 0 .. LINKS - 1) {
      exporterUp[i_] = 1; mirrorUp[i_] = 1; live[i_] = 1; stand[i_] = THAWED; granted[i_] = 1
    }
    for (i_ : 0 .. NODES - 1) { VALUE(i_, 1) = 1 }
    last[1] = 1;
#ifdef OWNERS
    select(k_ : 0 .. NODES - 1); owner[0] = k_;
    select(k_ : 0 .. NODES - 1); owner[1] = k_;
#else
    owner[0] = (LINKS > 1 -> 2 : 1);
    owner[1] = (LINKS > 1 -> 2 : 1);
#endif
    k_ = 0;
    for (i_ : 0 .. NODES - 1) { run Program(i_) }
    for (i_ : 0 .. LINKS - 1) { run Exporter(i_); run Mirror(i_) }
    run Calm();
    i_ = 0
  }
  timeout -> d_step { atRest() }
}
