// Stands ahead of every source of the build that scripts/helgrind makes.
//
// helgrind follows threads, mutexes and condition variables. The standard library does two things
// past these, by atomic instructions and system calls, in which helgrind sees races that are none.
#pragma once

#include <valgrind/helgrind.h>

// The owners of a shared_ptr are counted by atomic instructions. The library has these two for a
// checker that must be told what the counting orders, and leaves out a short cut for its sake.
#define _GLIBCXX_SYNCHRONIZATION_HAPPENS_BEFORE(address) ANNOTATE_HAPPENS_BEFORE(address)
#define _GLIBCXX_SYNCHRONIZATION_HAPPENS_AFTER(address) ANNOTATE_HAPPENS_AFTER(address)
#include <bits/c++config.h>
#undef _GLIBCXX_TSAN
#define _GLIBCXX_TSAN 1

// A future is waited for in a system call of Linux; where there is none, on a condition variable.
#undef _GLIBCXX_HAVE_LINUX_FUTEX
