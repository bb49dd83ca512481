#include "decoding/program/Confinement.h"

#include <fcntl.h>
#include <malloc.h>
#include <pthread.h>
#include <sched.h>
#include <seccomp.h>
#include <sys/ioctl.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <sstream>
#include <string>

namespace kpx {

namespace {

/// The library's own macros for it are C's.
constexpr scmp_arg_cmp argument(unsigned index, scmp_compare comparison, scmp_datum_t first, scmp_datum_t second = 0) {
    return {index, comparison, first, second};
}

constexpr rlim_t memory = rlim_t{512} << 20;
constexpr rlim_t seconds = 5;

/// What can be written to and is nobody else's. The address space would say less: a reader of documents may reserve a
/// great part of it, whatever it then uses.
rlim_t memoryNow() {
    unsigned long pages = 0;
    if (std::FILE* file = std::fopen("/proc/self/statm", "re")) {
        if (std::fscanf(file, "%*u %*u %*u %*u %*u %lu", &pages) != 1) {
            pages = 0;
        }
        static_cast<void>(std::fclose(file));
    }
    return pages * static_cast<rlim_t>(::sysconf(_SC_PAGESIZE));
}

rlim_t secondsTaken() {
    rusage taken{};
    ::getrusage(RUSAGE_SELF, &taken);
    return static_cast<rlim_t>(taken.ru_utime.tv_sec + taken.ru_stime.tv_sec);
}

void limit(__rlimit_resource resource, rlim_t most) {
    const rlimit limits{most, most};
    ::setrlimit(resource, &limits);
}

/// Threads that scale pictures would otherwise reserve far more room than they use, out of the limit.
void reserveLittleForThreads() {
    constexpr std::size_t stack = std::size_t{1} << 20;
    ::mallopt(M_ARENA_MAX, 1);
    pthread_attr_t attributes;
    if (::pthread_attr_init(&attributes) == 0) {
        ::pthread_attr_setstacksize(&attributes, stack);
        ::pthread_setattr_default_np(&attributes);
        ::pthread_attr_destroy(&attributes);
    }
}

/// What is refused, by what it would be for. A name that this machine's processor does not have is no loss.
constexpr std::array refusedCalls{
    "socket connect bind accept accept4 sendto sendmmsg socketcall",
    "creat truncate truncate64 ftruncate rename renameat renameat2 link linkat symlink symlinkat unlink unlinkat",
    "mkdir mkdirat rmdir mknod mknodat mount umount2 chroot pivot_root",
    "chmod fchmod fchmodat chown fchown lchown fchownat utime utimes utimensat futimesat",
    "setxattr lsetxattr fsetxattr removexattr lremovexattr fremovexattr",
    "fork vfork execve execveat kill tkill rt_sigqueueinfo rt_tgsigqueueinfo pidfd_open pidfd_send_signal pidfd_getfd",
    "ptrace process_vm_readv process_vm_writev process_madvise",
    "unshare setns bpf keyctl add_key request_key io_uring_setup userfaultfd perf_event_open",
};

/// Files may be read; the answer goes to a pipe that is open already.
void giveUpSystemCalls() {
    scmp_filter_ctx filter = ::seccomp_init(SCMP_ACT_ALLOW);
    if (!filter) {
        return;
    }
    ::seccomp_attr_set(filter, SCMP_FLTATR_CTL_TSYNC, 1);  // threads that are there already too
    constexpr std::uint32_t refuse = SCMP_ACT_ERRNO(EACCES);
    for (const char* names : refusedCalls) {
        std::istringstream words(names);
        for (std::string name; words >> name;) {
            ::seccomp_rule_add(filter, refuse, ::seccomp_syscall_resolve_name(name.c_str()), 0);
        }
    }
    // Their flags lie in memory, where no filter sees them; who is told that they are missing takes the older calls.
    for (const char* name : {"openat2", "clone3"}) {
        ::seccomp_rule_add(filter, SCMP_ACT_ERRNO(ENOSYS), ::seccomp_syscall_resolve_name(name), 0);
    }
    // Threads, but no process, which would have limits of its own.
    ::seccomp_rule_add(filter, refuse, SCMP_SYS(clone), 1, argument(0, SCMP_CMP_MASKED_EQ, CLONE_THREAD, 0));
    // Signals, limits and priorities of its own alone: 0 stands for the process itself.
    ::seccomp_rule_add(filter, refuse, SCMP_SYS(tgkill), 1,
                       argument(0, SCMP_CMP_NE, static_cast<scmp_datum_t>(::getpid())));
    ::seccomp_rule_add(filter, refuse, SCMP_SYS(prlimit64), 1, argument(0, SCMP_CMP_NE, 0));
    // No keys typed into the terminal that the program may have been started from.
    ::seccomp_rule_add(filter, refuse, SCMP_SYS(ioctl), 1, argument(1, SCMP_CMP_MASKED_EQ, 0xFFFFFFFF, TIOCSTI));
    for (const scmp_datum_t flag : {O_WRONLY, O_RDWR, O_CREAT, O_TRUNC}) {
        ::seccomp_rule_add(filter, refuse, ::seccomp_syscall_resolve_name("open"), 1,
                           argument(1, SCMP_CMP_MASKED_EQ, flag, flag));
        ::seccomp_rule_add(filter, refuse, ::seccomp_syscall_resolve_name("openat"), 1,
                           argument(2, SCMP_CMP_MASKED_EQ, flag, flag));
    }
    // A kernel that knows no filters leaves the limits, which are what most hostile files run into.
    if (::seccomp_load(filter) != 0) {
        static_cast<void>(std::fputs("velmora-decoder: this kernel takes no filter of system calls\n", stderr));
    }
    ::seccomp_release(filter);
}

}  // namespace

void confine() {
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    reserveLittleForThreads();
    limit(RLIMIT_CORE, 0);
    limit(RLIMIT_FSIZE, 0);
    limit(RLIMIT_CPU, secondsTaken() + seconds);
    limit(RLIMIT_DATA, memoryNow() + memory);
    giveUpSystemCalls();
}

}  // namespace kpx
