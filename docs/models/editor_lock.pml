/* The hand-over of a job's editor lock, as GetNewLockExcludingInterlopers does it: tasks that know the same old lock
 * race for it, each may die between any two statements, and the job may be removed at any moment.
 *
 * One step is one SQL statement. A "code:" line names the function that a step stands for, a "says:" line the text in
 * it that the step relies on; script/models looks whether both are still there.
 *
 * What must hold, whatever the order:
 *   - of the tasks that exchange one lock, at most one succeeds;
 *   - a task's row names only locks of its own that the job's row has carried;
 *   - when nobody died and the job stayed, the lock that it carries at the end is in the row of the task that wrote it.
 * A task whose lock is exchanged between its own UPDATE and its re-read has lost: the one that did it has won from that lock.
 */

#ifndef TASKS
#define TASKS 3
#endif
#ifndef HANDOVERS
#define HANDOVERS 2  /* how often each task tries */
#endif
#ifndef DEATHS
#define DEATHS 1
#endif
#define FIRST 1
/* Every new lock is one that never was; its number tells whose it is. */
#define NEW_LOCK (2 + me * HANDOVERS + tries - 1)
#define LOCKS (2 + TASKS * HANDOVERS)
#define AUTHOR(lock) ((lock - 2) / HANDOVERS)

bool jobExists = true;
byte jobLock = FIRST;
byte rowLock[TASKS];  /* the tasks' rows */

/* What happened, for the assertions only. */
bit isExchanged[LOCKS];  /* whether a hand-over that began with this lock has succeeded */
bit wasCarried[LOCKS];   /* whether the job's row has carried it */
bool dead[TASKS];
byte ended = 0;

/* code: src/tasks/editor_lock.cpp: GetNewLockExcludingInterlopers
 * says: std::string newLockGuid = frame.NewGuid();
 */
inline MakeLock() { newLock = NEW_LOCK }

/* code: src/tasks/editor_lock.cpp: GetNewLockExcludingInterlopers
 * says:  AND jobeditorlockguid = " << frame.FormatGuid(OldLockGUID);
 */
inline Exchange() {
    d_step {
        if
#ifdef BREAK_UNCONDITIONAL
        :: jobExists -> jobLock = newLock; wasCarried[newLock] = 1
#else
        :: jobExists && jobLock == oldLock -> jobLock = newLock; wasCarried[newLock] = 1
#endif
        :: else
        fi
    }
}

/* code: src/tasks/editor_lock.cpp: GetNewLockExcludingInterlopers
 * says: if (rows.IsEmpty()) frame.Raise(745,
 * says: if (lockGuid != newLockGuid) {
 */
inline ReadBack() {
    d_step {
        if
        :: !jobExists -> won = false
#ifdef BREAK_NO_RE_READ
        :: else -> won = true
#else
#ifdef BREAK_LOOSE_RE_READ
        :: else -> won = (jobLock != oldLock)
#else
        :: else -> won = (jobLock == newLock)
#endif
#endif
        fi
    }
}

/* code: src/tasks/task_registration.cpp: UpdateJobTaskLock
 * says:  SET lockguid =
 */
inline Record() { rowLock[me] = newLock }

proctype Task(byte me) {
    byte tries = 0, oldLock = 0, newLock = 0;
    bool won = false;
    {
        do
        :: tries < HANDOVERS ->
            atomic { tries++;
                     won = false; oldLock = jobLock };  /* read from the row, or known from before */
            atomic { MakeLock(); Exchange() };
#ifdef BREAK_RECORD_FIRST
            Record();
            ReadBack();
#else
            ReadBack();
            if
            :: won -> Record()
            :: else
            fi;
#endif
            if
            :: won -> atomic { assert(!isExchanged[oldLock]); isExchanged[oldLock] = 1 }
            :: else
            fi
        :: else -> break
        od
    } unless { dead[me] };
    ended++
}

/* Ends a task between any two of its statements: what it wrote stays, the rest never comes. */
active [DEATHS] proctype Death() {
    if
    :: dead[0] = true
    :: dead[TASKS - 1] = true
    :: true
    fi;
    ended++
}

/* code: src/lifecycle/job_removal.cpp: RemoveJobAndItems */
active proctype Remover() {
    if
    :: jobExists = false
    :: true
    fi;
    ended++
}

init {
    byte i = 0;
    bool someoneDied = false;
    atomic {
        do
        :: i < TASKS -> run Task(i); i++
        :: else -> break
        od
    };
    ended == TASKS + DEATHS + 1 -> d_step {
        i = 0;
        do
        :: i < TASKS ->
            assert(rowLock[i] == 0 || (rowLock[i] != FIRST && AUTHOR(rowLock[i]) == i && wasCarried[rowLock[i]]));
            someoneDied = someoneDied || dead[i];
            i++
        :: else -> break
        od;
        i = 0;
        assert(someoneDied || !jobExists || (jobLock != FIRST && rowLock[AUTHOR(jobLock)] == jobLock))
    }
}
