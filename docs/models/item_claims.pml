/* How the hosts of "kxjob work" share the items of one job: claim a lot, finish it, give it back, take it over, start and
 * end the job. Workers may die, be stopped, be slow beyond their claim, or lose the connection while their transaction
 * goes on in the server without them; all of this between any two steps.
 *
 * One step is one SQL statement. A transaction takes several: it locks the rows that it changes and shows them to the
 * others at its commit, as under READ COMMITTED. A statement that asks about other rows does so before it waits for a lock,
 * so what it has learned may be old by then. A "code:" line names the function that a step stands for, a "says:" line the
 * text in it that the step relies on; script/models looks whether both are still there.
 *
 * What must hold, whatever the order:
 *   - an item is finished once, and counted once;
 *   - an item in work is held by a RUNNING task: what a dead host held is worked again, and none is lost;
 *   - the job is started by one worker and ended by one, when all items are finished;
 *   - as long as one worker lives, the job gets there (otherwise spin finds a state where all wait).
 */

#ifndef WORKERS
#define WORKERS 2  /* or 1 */
#endif
#ifndef ITEMS
#define ITEMS 2
#endif
#ifndef LOT
#define LOT 2     /* how many items a worker claims at once */
#endif
#ifndef DEATHS
#define DEATHS 1  /* hosts that die */
#endif
#ifndef SLOW
#define SLOW 0    /* claims of living hosts that run out */
#endif
#ifndef LOSSES
#define LOSSES 0  /* 1: a connection is lost */
#endif
#ifndef STOPS
#define STOPS 0   /* workers that are told to stop */
#endif
#ifndef RENEWALS
#define RENEWALS 0
#endif

#define WAITING 0
#define QUEUED 1
#define RUNNING 2
#define COMPLETE 3
#define FAILED 4

#define TASKS 4                           /* two a worker: a new one in the row of an old one, of which nothing is left */
#define SESSIONS 5                        /* two a worker: one may go on without it; and the one that takes over */
#define TAKER (SESSIONS - 1)
#define ALL 7                             /* a set of items is a number, item 0 the lowest bit */
#define NOBODY 0

/* The rows: what all see, and what the transaction of session `by` - 1 has made of it. */
typedef Task { byte state; byte newState; byte by; byte claim; byte lock };
typedef Item { byte state; byte newState; byte owner; byte newOwner; byte by };
Task task[TASKS];
Item item[3];
byte jobState = QUEUED, jobLock, jobBy, hint, newHint, succeeded, newSucceeded, failed, newFailed;

/* What a worker asks a session to do. */
#define IDLE 0
#define CLAIM 1
#define FINISH 2
#define CLOSE 3
#define TAKE_OVER 4
#define DONE 5
typedef Request { byte kind; byte which; byte items };
Request request[SESSIONS];
bool isAlone[SESSIONS];  /* its worker has gone on without it */
bool isBroken[SESSIONS];

typedef Worker_ { bool isDead; bool isStopped; bool isLost; bool isEnding; byte current; byte startLock; byte old; byte new; byte last };
Worker_ worker[2];
byte starts, ends, deaths, slow, losses, stops, renewals;

#define IS_BUSY(s) (request[s].kind != IDLE && request[s].kind != DONE)
#define IS_WAITING(i) (i < ITEMS && item[i].state == WAITING)
#define IS_UNFINISHED(i) (i < ITEMS && item[i].state <= RUNNING)
#define ANY_WAITING (IS_WAITING(0) || IS_WAITING(1) || IS_WAITING(2))
#define ANY_UNFINISHED (IS_UNFINISHED(0) || IS_UNFINISHED(1) || IS_UNFINISHED(2))
#define SUCCEEDS(i) (i != 1)  /* item 1 fails */

#define HOLDS(t, i) (item[i].state == RUNNING && item[i].owner == t + 1)
#define HELD_BY(t) (HOLDS(t, 0) + 2 * HOLDS(t, 1) + 4 * HOLDS(t, 2))
#define WAITING_ITEMS (IS_WAITING(0) + 2 * IS_WAITING(1) + 4 * IS_WAITING(2))
#define IN_WORK(i) (i < ITEMS && item[i].state == RUNNING)
#define ITEMS_IN_WORK (IN_WORK(0) + 2 * IN_WORK(1) + 4 * IN_WORK(2))

#define MUST_WAIT(rowBy) (rowBy != 0 && rowBy != s + 1)
#define ITEM_WAITS(set, i) ((set >> i & 1) && MUST_WAIT(item[i].by))
#define ITEMS_WAIT(set) (ITEM_WAITS(set, 0) || ITEM_WAITS(set, 1) || ITEM_WAITS(set, 2))
#define STATE_SEEN(t) (task[t].by == s + 1 -> task[t].newState : task[t].state)

/* Holds at every commit. */
inline Check() {
    i = 0;
    assert(succeeded == (item[0].state == COMPLETE) + (item[1].state == COMPLETE) + (item[2].state == COMPLETE));
    assert(failed == (item[0].state == FAILED) + (item[1].state == FAILED) + (item[2].state == FAILED));
    do
    :: i < ITEMS ->
        assert(item[i].state != RUNNING || task[item[i].owner - 1].state == RUNNING);
        i++
    :: else -> break
    od;
    i = 0
}

/* What the session of this process has been asked. */
#define KIND request[s].kind
#define T request[s].which
#define SET request[s].items
#define WHERE (KIND == CLOSE -> SET : ALL)
#define NEXT (SET & 4 -> 3 : (SET & 2 -> 2 : 1))

/* ---- transactions ---- */

/* code: protocol/item_lots.cpp: Take
 * says: SET lastjobitem = lastjobitem WHERE jobtaskguid = {} AND jobtaskstateid = 'RUNNING'
 * code: protocol/item_results.cpp: LockTask
 * says: SET lastjobitem = {} WHERE jobtaskguid = {} AND jobtaskstateid = 'RUNNING'
 */
inline LockTask() {
    d_step {
        (task[T].state != RUNNING || !MUST_WAIT(task[T].by)) ->
        if
        :: task[T].state == RUNNING -> task[T].by = s + 1; task[T].newState = RUNNING
        :: else
        fi
    }
}

inline LockJob() { jobBy = s + 1; newHint = hint; newSucceeded = succeeded; newFailed = failed }

/* code: protocol/item_lots.cpp: Take
 * says: SET nextjobitem = {} WHERE jobguid = {} AND jobstateid = 'RUNNING' AND nextjobitem < {}
 */
inline RaiseHint() {
    d_step {
        (!(jobState == RUNNING && hint < NEXT) || !MUST_WAIT(jobBy)) ->
        if
        :: jobState == RUNNING && hint < NEXT -> LockJob(); newHint = NEXT
        :: else
        fi
    }
}

inline Write(which, itsState, itsOwner) {
    i = 0;
    do
    :: i < ITEMS ->
        if
        :: which >> i & 1 ->
            assert(item[i].state <= RUNNING);  /* what is finished stays as it is */
            item[i].by = s + 1; item[i].newState = itsState; item[i].newOwner = itsOwner
        :: else
        fi;
        i++
    :: else -> break
    od;
    i = 0
}

/* code: protocol/item_lots.cpp: Take
 * says: WHERE jobguid = {} AND sequence BETWEEN {} AND {} AND {}{} AND EXISTS (SELECT 1 FROM {} WHERE jobtaskguid = {} AND jobtaskstateid = 'RUNNING') AND EXISTS (SELECT 1 FROM {} WHERE jobguid = {} AND jobstateid = 'RUNNING')
 */
#ifdef BREAK_TAKE_WHAT_WAS_READ
#define TO_TAKE (WAITING_ITEMS | ITEMS_IN_WORK)
#else
#define TO_TAKE WAITING_ITEMS
#endif
inline TakeItems() {
    d_step {
        if
        :: STATE_SEEN(T) == RUNNING && jobState == RUNNING -> rows = SET & TO_TAKE
        :: else -> rows = 0
        fi
    };
    d_step {
        (!ITEMS_WAIT(rows & TO_TAKE)) ->
        rows = rows & TO_TAKE;
        Write(rows, RUNNING, T + 1);
        rows = 0
    }
}

/* code: protocol/item_results.cpp: Held
 * says: jobitemguid IN ({}) AND jobtaskguid = {} AND jobitemstateid = 'RUNNING'
 */
#ifdef BREAK_FINISH_WITHOUT_CLAIM
#define STILL_HELD ITEMS_IN_WORK
#else
#define STILL_HELD HELD_BY(T)
#endif

/* code: protocol/item_results.cpp: Count
 * says:  AND EXISTS (SELECT 1 FROM {} WHERE {})
 * code: protocol/item_results.cpp: Adding
 * says: {0} = COALESCE({0}, 0) + (SELECT COUNT(*) FROM {1} WHERE {2})
 */
inline CountItems() {
    d_step {
#ifdef BREAK_COUNT_WHAT_WAS_RUN
        rows = SET
#else
        rows = SET & STILL_HELD
#endif
    };
    d_step {
        (rows == 0 || !MUST_WAIT(jobBy)) ->
        if
        :: rows != 0 ->
            LockJob();
            newSucceeded = succeeded + (rows & 1) + (rows >> 2 & 1);
            newFailed = failed + (rows >> 1 & 1)
        :: else
        fi;
        rows = 0
    }
}

/* One statement for those that succeeded and one for those that failed, of different rows: taken together.
 * code: protocol/item_results.cpp: Write
 * says: SET jobitemstateid = {}, startdt = {}, enddt = {}{} WHERE {}
 */
inline FinishHeld() {
    d_step {
        (!ITEMS_WAIT(SET & STILL_HELD)) ->
        rows = SET & STILL_HELD & 5;
        Write(rows, COMPLETE, T + 1);
        rows = SET & STILL_HELD & 2;
        Write(rows, FAILED, T + 1);
        rows = 0
    }
}

/* code: protocol/task_claims.cpp: CloseTask
 * says: SET jobtaskstateid = {}, enddt = {} WHERE jobtaskguid = {} AND jobtaskstateid = 'RUNNING'
 * code: protocol/task_claims.cpp: TakeOver
 * says: AND jobtaskstateid = 'RUNNING' AND enddt = {}
 */
#ifdef BREAK_TAKE_OVER_RENEWED
#define IS_AS_READ true
#else
#define IS_AS_READ (KIND == CLOSE || task[T].claim == SET)
#endif
inline EndTheTask() {
    d_step {
        (!(task[T].state == RUNNING && IS_AS_READ) || !MUST_WAIT(task[T].by)) ->
        if
        :: task[T].state == RUNNING && IS_AS_READ ->
            assert(KIND == CLOSE || task[T].claim == SET);  /* a claim that was renewed in time holds */
            task[T].by = s + 1;
            task[T].newState = (KIND == CLOSE -> COMPLETE : FAILED)
        :: else
        fi
    }
}

/* code: protocol/task_claims.cpp: GivingBack
 * says: SET nextjobitem = CASE WHEN nextjobitem > {1} THEN {1} ELSE nextjobitem END WHERE jobguid = {2}
 */
inline LowerHint() {
    d_step { rows = HELD_BY(T) & WHERE };
    d_step {
        !MUST_WAIT(jobBy) ->
        LockJob();
        i = (rows & 1 -> 0 : (rows & 2 -> 1 : (rows & 4 -> 2 : ITEMS)));
        newHint = (hint > i -> i : hint);
        i = 0;
        rows = 0
    }
}

/* code: protocol/task_claims.cpp: GivingBack
 * says: jobguid = {} AND jobtaskguid = {} AND jobitemstateid = 'RUNNING'
 * says:  AND sequence BETWEEN {} AND {}
 * says:  AND EXISTS (SELECT 1 FROM {} WHERE jobtaskguid = {} AND jobtaskstateid IN ('COMPLETE', 'FAILED'))
 */
inline GiveBack() {
    d_step {
        if
        :: STATE_SEEN(T) >= COMPLETE -> rows = HELD_BY(T) & WHERE
        :: else -> rows = 0
        fi
    };
    d_step {
        (!ITEMS_WAIT(rows & HELD_BY(T))) ->
        rows = rows & HELD_BY(T);
        Write(rows, WAITING, NOBODY);
        rows = 0
    }
}

/* What a session has changed becomes what all see, or is forgotten. */
inline End(isKept) {
    d_step {
        i = 0;
        do
        :: i < TASKS ->
            if
            :: task[i].by == s + 1 -> task[i].by = 0; task[i].state = (isKept -> task[i].newState : task[i].state); task[i].newState = 0
            :: else
            fi;
            i++
        :: else -> break
        od;
        i = 0;
        do
        :: i < ITEMS ->
            if
            :: item[i].by == s + 1 ->
                item[i].by = 0;
                item[i].state = (isKept -> item[i].newState : item[i].state);
                item[i].owner = (isKept -> item[i].newOwner : item[i].owner);
                item[i].newState = 0; item[i].newOwner = 0
            :: else
            fi;
            i++
        :: else -> break
        od;
        if
        :: jobBy == s + 1 ->
            jobBy = 0;
            hint = (isKept -> newHint : hint);
            succeeded = (isKept -> newSucceeded : succeeded);
            failed = (isKept -> newFailed : failed);
            newHint = 0; newSucceeded = 0; newFailed = 0
        :: else
        fi;
        Check();
        if
        :: s != TAKER -> KIND = DONE; isBroken[s] = false
        :: else -> KIND = IDLE; T = 0; SET = 0
        fi
    }
}

/* code: protocol/task_claims.cpp: EndAndGiveBack
 * says: store.ExecuteTogether(statements);
 */
inline EndAndGiveBack() {
    EndTheTask();
#ifdef BREAK_GIVE_BACK_LATER
    End(true);
#endif
    LowerHint();
    GiveBack()
}

/* code: src/defaults/store/store.cpp: ExecuteTogether */
proctype Session(byte s) {
    byte rows, i;
    end:
    do
    :: IS_BUSY(s) -> {
        if
        :: KIND == CLAIM ->
#ifndef BREAK_CLAIM_WITHOUT_TASK
            LockTask();
#endif
            RaiseHint();
            TakeItems()
        :: KIND == FINISH ->
#ifndef BREAK_FINISH_WITHOUT_TASK
            LockTask();
#endif
            CountItems();
            FinishHeld()
        :: KIND == CLOSE -> EndAndGiveBack()
        fi;
        End(true)
    } unless { isBroken[s]; End(false) }
    od
}

/* The pulse of whichever host: claims that have run out. A living host's runs out only when it is slow.
 * code: protocol/task_claims.cpp: ExpiredTasks
 * says: jobtaskstateid = 'RUNNING' AND enddt IS NOT NULL AND enddt < {}
 * code: host/pulse.cpp: TakeOverExpired
 */
#define OWNER_IS_DEAD(x) worker[x / 2].isDead
#define HAS_EXPIRED(x) (x < TASKS && task[x].state == RUNNING && task[x].claim != 0 && (OWNER_IS_DEAD(x) || slow < SLOW))
active proctype Pulse() {
    byte s = TAKER, rows, i;
    end:
    do
    :: atomic {
        if
        :: HAS_EXPIRED(0) -> T = 0
        :: HAS_EXPIRED(1) -> T = 1
        :: HAS_EXPIRED(2) -> T = 2
        :: HAS_EXPIRED(3) -> T = 3
        fi;
        KIND = TAKE_OVER;
        SET = task[T].claim;  /* as read */
        slow = (OWNER_IS_DEAD(T) -> slow : slow + 1)
       };
       EndAndGiveBack();
       End(true);
           od
}

/* ---- a worker ---- */

#define CARRIES(x) (jobLock == x || task[0].lock == x || task[1].lock == x || task[2].lock == x || task[3].lock == x \
    || KNOWS(0, x) || KNOWS(1, x))
#define KNOWS(w, x) (worker[w].startLock == x || worker[w].old == x || worker[w].new == x || worker[w].last == x)
/* A new GUID: a number that nobody knows. */
inline NewLock(name) {
    i = 1;
    do
    :: CARRIES(i) -> i++
    :: else -> break
    od;
    name = i;
    i = 0
}

/* Asks the worker's session for a transaction, to be followed by what ends the wait: its end, or a lost connection, after
 * which another session does the same again. A dead worker's session may go on.
 */
#define ASK(what, which_, items_) request[s].kind = what; request[s].which = which_; request[s].items = items_
#define IS_DONE (request[s].kind == DONE && !isAlone[s])
#define MAY_LOSE (losses < LOSSES && s == 0)  /* workers are alike: it is worker 0 */
#define LOSE losses++; isAlone[s] = true; s++

/* code: protocol/job_course.cpp: IsHeldByOther
 * says: jobtaskstateid = 'RUNNING' AND lockguid = {} AND jobtaskguid <> {}
 */
#define HELD_IN(x, lock_) (x != t && task[x].state == RUNNING && task[x].lock == lock_)
#define HELD_BY_OTHER(lock_) (HELD_IN(0, lock_) || HELD_IN(1, lock_) || HELD_IN(2, lock_) || HELD_IN(3, lock_))
#define IS_AT_THE_END(x) (x != w && worker[x].isEnding && !worker[x].isDead)
#define OTHERS_END (IS_AT_THE_END(0) || IS_AT_THE_END(1))

proctype Worker(byte w) {
    byte s, t, lo, lot, mine, done, i;
    bool isKnown, isAvoided;
    {
        atomic { s = 2 * w; t = 2 * w };
choose:
        /* Several reads: they only say where to look, each write asks again.
         * code: protocol/job_choice.cpp: ChooseJob
         * code: host/worker.cpp: NextJob
         */
        if
        :: jobState == COMPLETE || worker[w].isStopped -> goto over
        :: d_step { jobState != COMPLETE && ANY_WAITING -> isAvoided = false; NewLock(worker[w].startLock) }
        :: d_step { jobState != COMPLETE && !ANY_UNFINISHED && (!isAvoided || !(OTHERS_END || HELD_BY_OTHER(jobLock))) ->
            isAvoided = false; NewLock(worker[w].startLock) }
        fi;

        /* code: protocol/job_course.cpp: StartJob
         * says: SET jobstateid = 'RUNNING', startdt = {}, jobeditorlockguid = {} WHERE jobguid = {} AND jobstateid = 'QUEUED'
         * says: if (now.lock != lock) return JobStart::Already;
         */
start:
        atomic {
            (jobState != QUEUED || jobBy == 0) ->
            if
            :: jobState == QUEUED -> jobState = RUNNING; jobLock = worker[w].startLock
            :: else
            fi
        };
        if
        :: atomic { MAY_LOSE -> LOSE; goto start }
        :: d_step {
            if
            :: jobState != RUNNING
#ifdef BREAK_START_BY_STATE
            :: jobState == RUNNING -> starts++
#else
            :: jobState == RUNNING && jobLock == worker[w].startLock -> starts++
            :: jobState == RUNNING && jobLock != worker[w].startLock
#endif
            fi;
            assert(starts <= 1);
            worker[w].startLock = 0;
            i = (jobState == RUNNING -> 0 : 1)
           }
        fi;
        if
        :: atomic { i == 1 -> i = 0; goto choose }
        /* code: protocol/task_claims.cpp: RegisterTask */
        :: d_step {
            i == 0 && task[t].by == 0 ->
            assert(HELD_BY(t) == 0);
            task[t].state = RUNNING; task[t].claim = 0; task[t].lock = 0; worker[w].isLost = false; worker[w].current = t
           }
        fi;
        /* code: protocol/task_claims.cpp: RenewClaims */
        d_step { task[t].claim = 1; isKnown = true };

        /* code: host/worker.cpp: WorkLots
         * code: protocol/item_lots.cpp: FirstWaiting
         */
claim:
        atomic {
            if
            :: worker[w].isStopped || worker[w].isLost -> goto close
            :: else
            fi;
            mine = WAITING_ITEMS & (ALL << hint);
#ifndef BREAK_NO_SECOND_LOOK
            mine = (mine == 0 -> WAITING_ITEMS : mine);
#endif
            if
            :: mine == 0 -> assert(WAITING_ITEMS == 0); goto ending  /* else none would ever claim them */
            :: else
            fi;
            /* the first LOT of them, and what lies between */
            lo = (mine & 1 -> 0 : (mine & 2 -> 1 : 2));
            lot = 0;
            do
            :: lo < ITEMS && i < LOT && mine >> lo -> i = i + (mine >> lo & 1); lot = lot | (1 << lo); lo++
            :: else -> break
            od;
            i = 0; lo = 0; mine = 0;
            ASK(CLAIM, t, lot)
        };
        /* code: protocol/item_lots.cpp: HeldWithin
         * says:  AND jobtaskguid = {} AND jobitemstateid = 'RUNNING' ORDER BY sequence, jobitemguid
         */
        if
        :: d_step { IS_DONE -> request[s].kind = IDLE; mine = HELD_BY(t) & lot }
        :: atomic { MAY_LOSE -> LOSE; goto reclaim }
        fi;
        if
        :: mine != 0
        :: mine == 0 && jobState == RUNNING && task[t].state == RUNNING -> goto claim
        :: mine == 0 && !(jobState == RUNNING && task[t].state == RUNNING) -> goto ending
        fi;

        /* code: host/worker.cpp: WorkLot */
work:
        atomic {
            if
            :: worker[w].isStopped || worker[w].isLost -> mine = 0
            :: else
            fi;
            do
            :: mine != 0 ->
                i = (mine & 1 -> 1 : (mine & 2 -> 2 : 4));
                done = done | i;
                mine = mine & ~i;
                i = 0;
                if
                :: true -> break
                :: mine != 0
                fi
            :: else -> break
            od
        };

        /* code: host/worker.cpp: WriteResults
         * says: if (task_->isLost) return;
         * code: host/result_buffer.cpp: WriteLocked
         */
write:
        atomic {
            if
            :: worker[w].isLost || done == 0 -> goto written
            :: else -> ASK(FINISH, t, done)
            fi
        };
        if
        :: d_step { IS_DONE -> request[s].kind = IDLE }
        :: atomic { MAY_LOSE -> LOSE; goto write }
        fi;
written:
        atomic {
            done = 0;
            if
            :: mine != 0 -> goto work
            :: else -> goto claim
            fi
        };

        /* code: protocol/item_lots.cpp: Held
         * says: isLastLotAll_ = false;
         */
reclaim:
        atomic {
            mine = HELD_BY(t); isKnown = false;
            if
            :: mine == 0 -> goto claim
            :: else -> goto work
            fi
        };

        /* code: protocol/job_course.cpp: EndJob */
ending:
        atomic {
            if
            :: worker[w].isStopped || worker[w].isLost || ANY_UNFINISHED -> goto close
            :: else -> worker[w].isEnding = true
            fi
        };
        atomic {
            worker[w].old = jobLock;
            if
            :: jobState != RUNNING -> goto byOthers
            :: jobState == RUNNING && jobLock != 0 -> goto ask
            :: jobState == RUNNING && jobLock == 0 -> NewLock(worker[w].new)
            fi
        };
        /* code: protocol/job_course.cpp: GiveFirstLock
         * says:  AND (jobeditorlockguid IS NULL OR jobeditorlockguid = '')
         */
        d_step { (jobLock != 0 || jobBy == 0) -> jobLock = (jobLock == 0 -> worker[w].new : jobLock); worker[w].new = 0 };
        worker[w].old = jobLock;
ask:
        atomic {
            if
            :: HELD_BY_OTHER(worker[w].old) -> goto byOthers
            :: else -> NewLock(worker[w].new)
            fi
        };
        /* code: src/tasks/editor_lock.cpp: GetNewLockExcludingInterlopers */
        d_step {
            (jobLock != worker[w].old || jobBy == 0) ->
            jobLock = (jobLock == worker[w].old -> worker[w].new : jobLock);
            worker[w].old = 0
        };
        atomic {
            if
            :: MAY_LOSE -> LOSE; goto ending
            :: jobLock != worker[w].new -> goto byOthers
            :: jobLock == worker[w].new
            fi
        };
        d_step { task[t].by == 0 -> task[t].lock = worker[w].new; NewLock(worker[w].last) };
        /* code: protocol/job_course.cpp: EndJob
         * says: SET jobstateid = 'COMPLETE', jobeditorlockguid = {} WHERE jobguid = {} AND jobstateid = 'RUNNING' AND jobeditorlockguid = {} AND NOT EXISTS (SELECT 1 FROM {} WHERE jobguid = {} AND ({} OR jobitemstateid = 'RUNNING'))
         */
        if
        :: atomic { MAY_LOSE -> LOSE; goto ending }
        :: d_step {
            (jobLock != worker[w].new || jobBy == 0) ->
#ifdef BREAK_END_KEEPS_LOCK
            worker[w].last = worker[w].new;
#endif
            if
            :: jobState == RUNNING && jobLock == worker[w].new && !ANY_UNFINISHED ->
                jobState = COMPLETE; jobLock = worker[w].last
            :: else
            fi
           }
        fi;
        /* code: protocol/job_course.cpp: EndJob
         * says: if (then.lock != lastLock) return JobEnd::ByOthers;
         */
        atomic {
            if
            :: MAY_LOSE -> LOSE; goto ending
            :: jobState == COMPLETE && jobLock == worker[w].last -> ends++; assert(ends <= 1); goto close
            :: jobState != COMPLETE || jobLock != worker[w].last
            fi
        };
byOthers:
        isAvoided = true;

        /* code: host/worker.cpp: EndTask
         * says: if (task_->isLost) return host_.report.TaskLost(task_->name.task);
         */
close:
        atomic {
            worker[w].isEnding = false; worker[w].old = 0; worker[w].new = 0; worker[w].last = 0;
            if
            :: worker[w].isLost -> goto closed
#ifdef BREAK_CLOSE_LAST_LOT
            :: else -> ASK(CLOSE, t, lot)
#else
            :: else -> ASK(CLOSE, t, (isKnown -> lot : ALL))
#endif
            fi
        };
        if
        :: d_step { IS_DONE -> request[s].kind = IDLE }
        :: atomic { MAY_LOSE -> LOSE; goto close }
        fi;
closed:
        atomic { t = 2 * w + s % 2; lot = 0; isKnown = false; goto choose };
over:
        assert(worker[w].isStopped || (jobState == COMPLETE && !ANY_UNFINISHED))
    } unless {
        d_step {
            worker[w].isDead ->
            worker[w].isEnding = false; worker[w].startLock = 0; worker[w].old = 0; worker[w].new = 0; worker[w].last = 0;
            worker[w].isLost = false; s = 0; t = 0; lo = 0; lot = 0; mine = 0; done = 0; i = 0; isKnown = false; isAvoided = false
        }
    }
}

/* What happens to them. */
active proctype Fate() {
    end:
    do
    /* workers are alike: of two, whichever dies or is stopped first is worker 0 */
    :: atomic { deaths < DEATHS -> worker[deaths].isDead = true; isAlone[2 * deaths] = true; isAlone[2 * deaths + 1] = true; deaths++ }
    :: atomic { stops < STOPS -> worker[stops].isStopped = true; stops++ }
    /* a transaction whose worker has gone may be rolled back, at any moment */
    :: isAlone[0] && IS_BUSY(0) && !isBroken[0] -> isBroken[0] = true
    /* the pulse of a host
     * code: host/pulse.cpp: Renew
     * says: tasks[i]->isLost = !standings[i].isRunning;
     * code: protocol/task_claims.cpp: RenewClaims
     * says: SET enddt = {} WHERE jobtaskguid IN ({}) AND jobtaskstateid = 'RUNNING'
     */
    :: d_step { renewals < RENEWALS && !worker[0].isDead && task[worker[0].current].state == RUNNING && task[worker[0].current].claim != 0 && task[worker[0].current].by == 0 ->
        renewals++; task[worker[0].current].claim++ }
    :: d_step { !worker[0].isLost && !worker[0].isDead && task[worker[0].current].state == FAILED -> worker[0].isLost = true }
    :: d_step { !worker[1].isLost && !worker[1].isDead && task[worker[1].current].state == FAILED -> worker[1].isLost = true }
    od
}

init {
    byte i;
    atomic {
        do
        :: i < WORKERS -> worker[i].current = 2 * i; run Worker(i); run Session(2 * i); i++
        :: else -> break
        od;
#if LOSSES > 0
        run Session(1);
#endif
        i = 0;
#ifdef STARTED_BY_OTHERS
        jobState = RUNNING;  /* by another program, which gave it no lock */
#endif
    }
}
