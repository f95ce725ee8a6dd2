// Runs a built program with one thing going wrong: the n-th system call of a kind
// fails, the n-th call of a function of the C library fails, or a signal arrives there.
// The kernel fails the system calls (a seccomp filter hands them to the test), so it
// makes no difference whether the program, the C library or the C++ library makes them.
// What the dynamic loader and a sanitizer's run-time library do for themselves is not
// counted. Functions are taken by a library that is loaded in front of the C library.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "tests/harness/program.h"

// System calls that fail alike, under one name, and how they fail. Without an error they
// do not fail, but do half of what they were asked for.
struct call_kind {
    const char* name;
    std::vector<long> numbers;
    int error;
};

// Every kind there is. One row more, and all programs are tested with it.
std::span<const call_kind> call_kinds();

struct fault {
    const call_kind* calls = nullptr;  // null: a function
    const char* function = "malloc";   // one that interposed.cpp takes; all that allocate
    int nth = 1;                       // the first call that is met, from 1
    bool lasting = false;              // so do all behind it, but for those on standard error
    int signal_number = 0;             // raised inside the call in place of a failure
};

struct faulted_run {
    Finished finished;
    bool hit = false;     // there were as many calls as that
    int descriptor = -1;  // the first argument of the call that was hit
    int calls = 0;        // system calls of the kind, in all
};

// Nothing when this kernel, or a sanitizer, leaves the test no way to do it.
std::optional<faulted_run> run_with_fault(const std::vector<std::string>& argv, RunOptions options,
                                          const fault& what);

// A run that takes longer than this many seconds is ended by SIGALRM.
constexpr unsigned longest_run = 60;
