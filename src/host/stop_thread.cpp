#include "host/stop_thread.h"

#include <linux/futex.h>
#include <pthread.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdint>
#include <ctime>

#include "host/termination_handler.h"
#include "registry/signals.h"

namespace launcher {
namespace {

// A futex word that a signal handler may use too: std::atomic has no timed wait, and its untimed one makes no promise
// for handlers. All of it is system calls and lock-free operations.
using Word = std::atomic<std::uint32_t>;
static_assert(sizeof(Word) == 4 && Word::is_always_lock_free && std::atomic<std::uint64_t>::is_always_lock_free);

// Returns true when `word` has been woken or is no longer `expected`, and at times for no reason; false once `deadline`
// (CLOCK_MONOTONIC; none if null) has passed (futex(2)).
bool FutexWait(Word& word, std::uint32_t expected, const timespec* deadline) noexcept {
  return ::syscall(SYS_futex, &word, FUTEX_WAIT_BITSET_PRIVATE, expected, deadline, nullptr, FUTEX_BITSET_MATCH_ANY) ==
             0 ||
         errno != ETIMEDOUT;
}

void FutexWakeAll(Word& word) noexcept { ::syscall(SYS_futex, &word, FUTEX_WAKE_PRIVATE, INT_MAX); }

// Lets those who wait for a change of `count` look again at what it stands for.
void Bump(Word& count) noexcept {
  count.fetch_add(1);
  FutexWakeAll(count);
}

// Returns once `condition` holds. Whoever may have made it hold bumps `count` then.
template <typename Condition>
void WaitUntil(Word& count, Condition condition) noexcept {
  for (;;) {
    const std::uint32_t seen = count;
    if (condition()) return;
    FutexWait(count, seen, nullptr);
  }
}

enum State : std::uint32_t {
  kFree,
  kFilling,   // taken by an interrupted thread, which writes the fields
  kWaiting,   // handed over; the interrupted thread waits for the answer
  kResumed,   // handed over; the interrupted thread has waited long enough and gone on
  kAnswered,  // the waiting thread is about to see it and to free the slot
  kOwed,      // the thread that went on is being interrupted once more, and will free the slot
};

// One signal on its way from the interrupted thread to the stop thread and back.
struct Slot {
  Word state = kFree;
  std::atomic<std::uint32_t> thread{};  // ThreadNumber() of the interrupted thread
  pid_t tid{};
  int signalNumber{};
  std::uint64_t turn{};
  sigset_t mask{};  // of the interrupted thread in its handler, and so with SIGTERM (signal(7))
};

// As many signals as can be on their way at once with all that is promised. It takes more threads than that, or a
// StopService of more than a minute, to need the simpler way of those beyond: `g_surplus`.
constexpr std::size_t kSlots = 64;

constinit std::array<Slot, kSlots> g_slots;
constinit Word g_surplus{};     // signals to answer that found no slot; nobody waits for them
constinit Word g_handedOver{};  // changes when there is something to answer
constinit Word g_answered{};    // changes when something has been answered
constinit std::atomic<std::uint64_t> g_turns{};
constinit std::atomic<pid_t> g_process{};  // the process that has a stop thread
void (*g_answer)(int){};

// Of the stop thread only: whose signal is being answered.
constinit thread_local const sigset_t* t_interruptedMask = nullptr;

// A number of the calling thread that no other ever has: the kernel's may return in a later thread, which must not be
// taken for the one that went on.
std::uint32_t ThreadNumber() noexcept {
  static constinit Word numbers{};
  constinit thread_local static std::uint32_t number{};
  if (number == 0) number = numbers.fetch_add(1) + 1;
  return number;
}

bool ChangeState(Slot& slot, std::uint32_t from, State to) noexcept {
  return slot.state.compare_exchange_strong(from, to);
}

// --- On the interrupted thread, in its signal handler ---

bool IsOwedInterruption() noexcept {
  const auto owed = [me = ThreadNumber()](Slot& slot) { return slot.state == kOwed && slot.thread == me; };
  const auto slot = std::find_if(g_slots.begin(), g_slots.end(), owed);
  if (slot == g_slots.end()) return false;
  slot->state = kFree;
  return true;
}

Slot* TakeSlot() noexcept {
  const auto taken = [](Slot& slot) { return ChangeState(slot, kFree, kFilling); };
  const auto slot = std::find_if(g_slots.begin(), g_slots.end(), taken);
  return slot != g_slots.end() ? slot : nullptr;
}

void Fill(Slot& slot, int signalNumber) noexcept {
  slot.thread = ThreadNumber();
  slot.tid = ::gettid();
  slot.signalNumber = signalNumber;
  slot.turn = g_turns.fetch_add(1);
  ::pthread_sigmask(SIG_SETMASK, nullptr, &slot.mask);
  slot.state = kWaiting;
}

timespec InOneSecond() noexcept {
  timespec time{};
  ::clock_gettime(CLOCK_MONOTONIC, &time);
  ++time.tv_sec;
  return time;
}

void WaitForAnswer(Slot& slot) noexcept {
  const timespec deadline = InOneSecond();
  while (slot.state == kWaiting && FutexWait(slot.state, kWaiting, &deadline)) continue;
  if (!ChangeState(slot, kWaiting, kResumed)) slot.state = kFree;
}

// --- On the stop thread ---

bool IsUnanswered(const Slot& slot) noexcept {
  const std::uint32_t state = slot.state;
  return state == kWaiting || state == kResumed;
}

Slot* NextSlot() noexcept {
  Slot* next = nullptr;
  for (Slot& slot : g_slots) {
    if (IsUnanswered(slot) && (next == nullptr || slot.turn < next->turn)) next = &slot;
  }
  return next;
}

// Whether an interruption would still end up here: a module may have taken SIGTERM over meanwhile, or given it back its
// default action.
bool HandlerIsInPlace() noexcept {
  struct sigaction current {};
  return ::sigaction(SIGTERM, nullptr, &current) == 0 && current.sa_handler == handle_linux_signal;
}

// The kernel merges two of these that are pending on one thread, so a thread is never owed two: the one on its way
// interrupts it after this answer too.
void InterruptAgain(Slot& slot) noexcept {
  const pid_t tid = slot.tid;  // Once the slot is owed, the thread may free it at any moment.
  const auto isOwed = [&slot](const Slot& other) { return other.state == kOwed && other.thread == slot.thread; };
  if (!HandlerIsInPlace() || std::any_of(g_slots.begin(), g_slots.end(), isOwed)) {
    slot.state = kFree;
    return;
  }
  slot.state = kOwed;
  if (::tgkill(::getpid(), tid, SIGTERM) != 0) ChangeState(slot, kOwed, kFree);  // The thread has ended.
}

void AnswerSlot(Slot& slot) noexcept {
  g_answer(slot.signalNumber);
  if (ChangeState(slot, kWaiting, kAnswered)) {
    FutexWakeAll(slot.state);
  } else {
    InterruptAgain(slot);
  }
}

void AnswerNext(sigset_t& mask) noexcept {
  if (Slot* const slot = NextSlot(); slot != nullptr) {
    mask = slot->mask;
    AnswerSlot(*slot);
  } else {
    g_answer(SIGTERM);
    --g_surplus;
  }
}

bool AnyUnanswered() noexcept { return g_surplus != 0 || std::any_of(g_slots.begin(), g_slots.end(), IsUnanswered); }

void* RunStopThread(void* /*unused*/) noexcept {
  sigset_t mask{};
  t_interruptedMask = &mask;
  for (;;) {
    WaitUntil(g_handedOver, AnyUnanswered);
    AnswerNext(mask);
    // A SIGTERM that StopService raised at its own thread would stay pending here for good. The process can take it.
    if (TakePending(SIGTERM)) ::kill(::getpid(), SIGTERM);
    Bump(g_answered);
  }
}

}  // namespace

void StartStopThread(void (*answer)(int)) {
  g_answer = answer;
  sigset_t everySignal;
  sigfillset(&everySignal);
  // None of these calls but the creation can fail with what they are given.
  pthread_attr_t attributes;
  ::pthread_attr_init(&attributes);
  ::pthread_attr_setsigmask_np(&attributes, &everySignal);
  pthread_t thread{};
  if (::pthread_create(&thread, &attributes, RunStopThread, nullptr) == 0) g_process = ::getpid();
  ::pthread_attr_destroy(&attributes);
}

bool HandOverSignal(int signalNumber) noexcept {
  if (g_process != ::getpid()) return false;
  if (IsOwedInterruption()) return true;
  // A StopService that unblocked SIGTERM may find itself here, on the stop thread, which must not wait for itself.
  Slot* const slot = t_interruptedMask == nullptr ? TakeSlot() : nullptr;
  if (slot != nullptr) {
    Fill(*slot, signalNumber);
  } else {
    ++g_surplus;
  }
  Bump(g_handedOver);
  if (slot != nullptr) WaitForAnswer(*slot);
  return true;
}

InterruptedMask::InterruptedMask() noexcept {
  if (t_interruptedMask == nullptr) return;
  // A line of ours into a closed pipe leaves SIGPIPE pending here, which would end the process as soon as unblocked.
  while (TakePending(SIGPIPE)) continue;
  ::pthread_sigmask(SIG_SETMASK, t_interruptedMask, &ownMask_);
}

InterruptedMask::~InterruptedMask() {
  if (t_interruptedMask != nullptr) ::pthread_sigmask(SIG_SETMASK, &ownMask_, nullptr);
}

void WaitForAcceptedStops() noexcept {
  WaitUntil(g_answered, [] { return g_process != ::getpid() || !AnyUnanswered(); });
}

}  // namespace launcher
