"""How each function and system call fails, and which ones do not.

A function that the program calls is in FAULTS, is covered through others there (THROUGH), or is in NOT_FAILING with the
reason. A system call is in SYSTEM_FAULTS or in SYSTEM_NOT_FAILING.
"""

from __future__ import annotations

import errno
from fnmatch import fnmatchcase
from typing import Dict, Iterable, List, Mapping, NamedTuple, Optional, Sequence, Tuple

ONCE = "once"
ONWARDS = "onwards"


class Fault(NamedTuple):
    """How one call fails. `kind` says whether `value` is an error number, a result or a number of bytes."""

    name: str
    kind: str
    value: int
    reaches: Tuple[str, ...] = (ONCE, ONWARDS)


def errors(*names: str) -> List[Fault]:
    """Failures with an error number. Interruptions occur once, since a caller may retry forever."""
    return [
        Fault(name, "fail", getattr(errno, name), (ONCE,) if name in ("EINTR", "EAGAIN") else (ONCE, ONWARDS))
        for name in names
    ]


def results(*values: int) -> List[Fault]:
    """Failures with a result, as of mbed TLS and `glob`."""
    return [Fault(f"-{-value:#06x}" if value < 0 else f"result {value}", "fail", value) for value in values]


def short(count: int, *reaches: str) -> Fault:
    """Some of the bytes are delivered or accepted, without an error."""
    return Fault(f"short {count}", "short", count, reaches or (ONCE, ONWARDS))


NO_MEMORY = errors("ENOMEM")
# Single bytes would take minutes.
SOME_BYTES = 40_000
READ = errors("EIO", "EINTR") + [short(0), short(1, ONCE), short(SOME_BYTES)]
WRITE = errors("ENOSPC", "EIO", "EINTR") + [short(1)]
CONSOLE = errors("ENOSPC")
WRONG_BYTE = Fault("wrong byte", "wrong", 0, (ONCE,))

FAULTS: Mapping[str, Sequence[Fault]] = {
    # Memory
    "malloc": NO_MEMORY,
    "calloc": NO_MEMORY,
    "realloc": NO_MEMORY,
    "aligned_alloc": NO_MEMORY,
    "posix_memalign": NO_MEMORY,
    "mmap": NO_MEMORY,
    "mprotect": NO_MEMORY,
    "madvise": errors("ENOMEM", "EINVAL"),
    # Files
    "open": errors("ENOENT", "EACCES", "EMFILE", "EIO", "ENOMEM", "EINTR", "EWOULDBLOCK"),
    "openat": errors("ENOENT", "EACCES", "EMFILE", "EIO", "ENOMEM", "EINTR"),
    "mkstemp": errors("EACCES", "EEXIST", "EMFILE", "ENOSPC", "EROFS"),
    "close": errors("EIO", "EINTR"),
    "fcntl": errors("EMFILE", "EBADF"),
    "read": READ,
    "pread": READ + [WRONG_BYTE],
    "write": WRITE,
    "fsync": errors("EIO", "ENOSPC", "EINVAL"),
    "fdatasync": errors("EIO", "ENOSPC", "EINVAL"),
    "fchmod": errors("EPERM", "EIO"),
    "fchown": errors("EPERM", "EIO"),
    "ftruncate": errors("EIO", "EINTR"),
    "posix_fadvise": errors("EINVAL", "ESPIPE"),
    "stat": errors("ENOENT", "EACCES", "EIO", "ENOMEM", "EOVERFLOW"),
    "lstat": errors("ENOENT", "EACCES", "EIO", "ENOMEM"),
    "fstat": errors("EIO", "ENOMEM", "EOVERFLOW"),
    "fstatat": errors("ENOENT", "EACCES", "EIO", "ENOMEM"),
    "access": errors("ENOENT", "EACCES", "EIO"),
    "readlink": errors("ENOENT", "EACCES", "EIO"),
    "rename": errors("EACCES", "EIO", "ENOSPC"),
    "link": errors("EACCES", "EEXIST", "EIO", "ENOSPC", "EPERM"),
    "unlink": errors("EACCES", "EIO", "ENOENT"),
    "remove": errors("EACCES", "EIO", "ENOENT"),
    "realpath": errors("ENOENT", "EACCES", "EIO", "ENOMEM"),
    # Streams
    "fopen": errors("ENOENT", "EACCES", "EMFILE", "ENOSPC", "ENOMEM"),
    "fdopen": errors("ENOMEM"),
    "fread": errors("EIO") + [short(1)],
    "fwrite": errors("ENOSPC", "EIO") + [short(1)],
    "fflush": errors("ENOSPC", "EIO"),
    "fclose": errors("ENOSPC", "EIO"),
    "fseek": errors("EIO"),
    "fseeko": errors("EIO"),
    "ftell": errors("EIO"),
    "ftello": errors("EIO"),
    "fprintf": CONSOLE,
    "fputc": CONSOLE,
    "fputs": CONSOLE,
    "vsnprintf": errors("ENOMEM"),
    "mbstowcs": errors("EILSEQ"),
    # Directories
    "opendir": errors("ENOENT", "EACCES", "EMFILE", "EIO", "ENOMEM"),
    "fdopendir": errors("EIO", "ENOMEM"),
    "readdir": errors("EIO"),
    "closedir": errors("EIO"),
    "scandir": errors("ENOENT", "EACCES", "EMFILE", "EIO", "ENOMEM"),
    # GLOB_NOSPACE and GLOB_ABORTED.
    "glob": results(1, 2),
    "fnmatch": results(-1),
    "getcwd": errors("ENOENT", "EACCES", "ENOMEM"),
    "chdir": errors("ENOENT", "EACCES", "EIO"),
    "mkdir": errors("EACCES", "ENOSPC", "EROFS", "EIO"),
    # Text
    "iconv_open": errors("EINVAL", "EMFILE", "ENOMEM"),
    # EILSEQ and EINVAL are verdicts on the text. Such a name gets an error text of its own.
    "iconv": errors("ENOMEM", "E2BIG"),
    # Time, random numbers, threads, limits
    "time": errors("EOVERFLOW"),
    "gmtime_r": errors("EOVERFLOW"),
    "clock_gettime": errors("EINVAL"),
    "getrandom": errors("ENOSYS", "EINTR", "EIO"),
    "getentropy": errors("ENOSYS", "EIO"),
    "syscall": errors("ENOSYS", "EINTR", "EIO"),
    "pthread_create": errors("EAGAIN") + [Fault("EAGAIN for good", "fail", errno.EAGAIN, (ONWARDS,))],
    "sysconf": errors("EINVAL"),
    "sched_getaffinity": errors("EPERM", "EINVAL"),
    "getrlimit": errors("EPERM"),
    "setrlimit": errors("EPERM"),
    "prctl": errors("EINVAL", "EPERM"),
    "sigaction": errors("EINVAL"),
    # mbed TLS: a failed allocation in each part, and the other documented errors.
    "mbedtls_entropy_func": results(-0x003C, -0x0040),
    "mbedtls_ctr_drbg_seed": results(-0x0034, -0x003A),
    "mbedtls_ctr_drbg_random": results(-0x0034),
    "mbedtls_sha256_ret": results(-0x0070, -0x0074),
    "mbedtls_sha256": results(-0x006E, -0x0074),
    "mbedtls_md": results(-0x5180),
    "mbedtls_pk_parse_keyfile": results(-0x3E00, -0x3F80, -0x3D00),
    "mbedtls_pk_check_pair": results(-0x3F80, -0x0010, -0x4200),
    "mbedtls_pk_sign": results(-0x3F80, -0x4480, -0x4300, -0x0010),
    "mbedtls_pk_verify": results(-0x3F80, -0x4280, -0x4380, -0x0010),
    "mbedtls_x509_crt_parse_der": results(-0x2880, -0x3F80),
    "mbedtls_x509_crl_parse_der": results(-0x2880),
    "mbedtls_x509_crt_verify": results(-0x3000, -0x2880, -0x2700),
}

# Patterns of functions that fail only through the ones above.
THROUGH: Mapping[str, Tuple[str, ...]] = {
    "_Znwm*": ("malloc",),
    "_Znam*": ("malloc",),
    "_ZnwmSt11align_val_t*": ("aligned_alloc",),
    "_ZnamSt11align_val_t*": ("aligned_alloc",),
    "__cxa_allocate_exception": ("malloc",),
    "_ZNSt6thread15_M_start_thread*": ("pthread_create",),
    "_ZNSt6chrono3_V212steady_clock3nowEv": ("clock_gettime",),
    "_ZNSt6chrono3_V212system_clock3nowEv": ("clock_gettime",),
    "_ZNSt3pmr25monotonic_buffer_resource13_M_new_bufferEmm": ("malloc",),
    "_ZN*St10filesystem7__cxx114path*": ("malloc",),
    "_ZN*St10filesystem12read_symlink*": ("readlink", "malloc"),
    "_ZNSt10filesystem6status*": ("stat", "malloc"),
    "_ZNSt13runtime_errorC*": ("malloc",),
    "_ZNSt13runtime_erroraS*": ("malloc",),
    "_ZNSt16invalid_argumentC*": ("malloc",),
    # A locale that is named is read from a file.
    "newlocale": ("openat", "malloc"),
    # Streams into strings.
    "_ZNSt7__cxx1118basic_stringstream*": ("malloc",),
    "_ZNSt7__cxx1119basic_ostringstream*": ("malloc",),
    "_ZN*St7__cxx1115basic_stringbuf*": ("malloc",),
    "_ZNSo*": ("malloc",),
    "_ZStlsISt11char_traitsIcE*": ("malloc",),
    "_ZSt16__ostream_insert*": ("malloc",),
    "_ZN*4pugi*": ("malloc",),
    "mbedtls_x509_crt_parse": ("calloc",),
    # Variants that check buffer sizes.
    "__fprintf_chk": ("fprintf",),
    "__vsnprintf_chk": ("vsnprintf",),
    "__fread_chk": ("fread",),
    "__mbstowcs_chk": ("mbstowcs",),
    "__read_chk": ("read",),
    "__pread_chk": ("pread",),
    "__readlink_chk": ("readlink",),
    "__realpath_chk": ("realpath",),
    "__getcwd_chk": ("getcwd",),
}

# Patterns of names, each with the reason why a call cannot fail.
NOT_FAILING: Sequence[Tuple[str, str]] = (
    ("_ITM_*", "is there only with transactional memory"),
    ("__gmon_start__", "is there only when profiling"),
    ("__libc_start_main", "calls main"),
    ("_ZSt*__throw_*", "throws"),
    ("_ZSt9terminatev", "ends the program"),
    ("_ZSt21__glibcxx_assert_fail*", "ends the program"),
    ("__chk_fail", "ends the program"),
    ("_ZNSt3_V2*_categoryEv", "names a variable"),
    ("_Unwind_Resume", "goes on throwing"),
    ("__gxx_personality_v0", "finds who catches"),
    ("__cxa_guard_*", "waits for another thread, on Linux for ever"),
    ("__cxa_*", "registers or goes on with what was allocated before"),
    ("__stack_chk_fail", "ends the program"),
    ("__once_proxy", "calls what std::call_once was given"),
    ("__errno_location", "names a variable"),
    # On ARM64.
    ("*getauxval", "reads what the kernel passed to the program, or gives 0"),
    ("__trunctfdf2", "computes"),
    ("_Exit", "ends the program"),
    ("abort", "ends the program"),
    ("__assert_fail", "ends the program"),
    ("_ZSt13set_terminatePFvvE", "sets a variable"),
    ("_ZSt17current_exceptionv", "names what was thrown"),
    ("_ZSt17rethrow_exception*", "goes on throwing"),
    ("_ZNSt15__exception_ptr*", "counts"),
    ("_ZNSt*D[012]Ev", "destroys"),
    ("_ZNSdD2Ev", "destroys"),
    ("_ZNKSt13runtime_error4whatEv", "reads a field"),
    ("_ZNSt13basic_filebuf*", "is called by CLI11 for configuration files, which no command has"),
    ("_ZSt7getline*", "is called by CLI11 for configuration files, which no command has"),
    ("_ZNSt6localeC*", "counts"),
    ("_ZNSt6locale7classicEv", "names a variable"),
    ("_ZNSt8ios_base*C[12]Ev", "sets fields"),
    ("_ZNSt9basic_iosIcSt11char_traitsIcEE*", "sets fields"),
    ("_ZNKSt5ctypeIcE*", "sets fields"),
    ("_ZSt9use_facet*", "names what a locale has"),
    ("_ZNKSt6locale2id5_M_idEv", "numbers what a locale has"),
    ("_ZSt21ios_base_library_initv", "readies the standard streams, which nobody uses"),
    ("_ZNSt18condition_variable*", "fails when misused alone"),
    ("pthread_mutex_*", "fails when misused alone"),
    ("pthread_once", "fails when misused alone"),
    ("_ZNSt6thread4joinEv", "fails when misused alone"),
    ("_ZNSt6thread6_StateD2Ev", "destroys"),
    ("_ZNSt6thread20hardware_concurrencyEv", "has 0 for what it cannot tell, and is asked after sched_getaffinity"),
    ("_ZNSt3pmr20get_default_resourceEv", "names a variable"),
    ("_ZNSt3pmr25monotonic_buffer_resourceD1Ev", "destroys"),
    ("_ZNKSt8__detail20_Prime_rehash_policy*", "computes"),
    ("_ZNSt8__detail15_List_node_base*", "links what is there"),
    ("_ZSt*_Rb_tree_*", "links what is there"),
    ("_ZSt11_Hash_bytesPKvmm", "computes"),
    ("_ZdlPv*", "frees"),
    ("_ZdaPv*", "frees"),
    ("free", "frees"),
    ("globfree", "frees"),
    ("iconv_close", "frees; fails when misused alone"),
    ("mbedtls_*_free", "frees"),
    ("mbedtls_*_init", "sets fields"),
    ("mbedtls_pk_get_*", "reads a field"),
    ("mbedtls_pk_can_do", "reads a field"),
    ("mbedtls_md_get_size", "reads a field"),
    ("mbedtls_md_info_from_type", "reads a table"),
    ("mbedtls_oid_get_sig_alg*", "reads a table"),
    ("mbedtls_asn1_get_*", "computes; fails for what is not as asked for alone"),
    ("mbedtls_x509_crt_check_key_usage", "computes"),
    ("mbedtls_x509_*_gets", "formats; fails where the buffer is too small alone, and gets a larger one then"),
    ("mbedtls_x509_crt_verify_info", "formats; fails where the buffer is too small alone"),
    ("mbedtls_platform_zeroize", "computes"),
    ("mem*", "computes"),
    ("__mem*_chk", "computes"),
    ("__explicit_bzero_chk", "computes"),
    ("__wmem*_chk", "computes"),
    ("__str*_chk", "computes"),
    ("str*", "computes"),
    ("wcs*", "computes"),
    ("wmem*", "computes"),
    # Including the names for the conversions of C23 (glibc 2.38).
    ("__isoc23_str*", "computes"),
    ("tolower", "computes"),
    ("isspace", "computes"),
    ("isprint", "computes"),
    ("llround", "computes"),
    ("ioctl", "asks for the width of a terminal, which the sweep's console is not"),
    ("getenv", "reads"),
    ("localeconv", "names a variable"),
    ("tow*_l", "computes"),
    ("freelocale", "frees"),
    ("inet_pton", "computes; fails for what is no address alone"),
    ("alphasort", "compares"),
    ("__sched_cpucount", "computes"),
    ("getpid", "reads a field"),
    ("setbuf", "returns nothing"),
    ("isatty", "has 0 for what is no terminal, as the sweep's console is none"),
    ("snprintf", "formats numbers and short names in mbed TLS, for nobody here to see"),
    ("__snprintf_chk", "formats numbers and short names in mbed TLS, for nobody here to see"),
    # For the self tests, timer and the like of mbed TLS; the program calls none of them.
    ("__printf_chk", "is called by the self tests of mbed TLS alone"),
    ("puts", "is called by the self tests of mbed TLS alone"),
    ("putchar", "is called by the self tests of mbed TLS alone"),
    ("alarm", "is called by the timer of mbed TLS alone"),
    ("signal", "is called by the timer of mbed TLS alone"),
    ("gettimeofday", "is called by the timer of mbed TLS alone"),
    ("rand", "is called by the self tests of mbed TLS alone"),
    ("fgets", "is called to read numbers from files, which nobody has mbed TLS do here"),
    ("ferror", "reads a field"),
)

SYSTEM_FAULTS: Mapping[str, Sequence[Fault]] = {
    "openat": errors("ENOENT", "EACCES", "EMFILE", "EIO", "ENOMEM", "EINTR"),
    "read": errors("EIO", "EINTR"),
    "pread64": errors("EIO", "EINTR"),
    "write": errors("ENOSPC", "EIO", "EINTR"),
    "pwrite64": errors("ENOSPC", "EIO", "EINTR"),
    "close": errors("EIO", "EINTR"),
    "lseek": errors("EIO", "ESPIPE"),
    "fcntl": errors("EMFILE", "EBADF"),
    "newfstatat": errors("ENOENT", "EACCES", "EIO", "ENOMEM"),
    "fstat": errors("EIO", "ENOMEM"),
    "stat": errors("ENOENT", "EACCES", "EIO", "ENOMEM"),
    "lstat": errors("ENOENT", "EACCES", "EIO", "ENOMEM"),
    "statx": errors("ENOENT", "EACCES", "EIO", "ENOMEM"),
    "access": errors("ENOENT", "EACCES", "EIO"),
    "faccessat2": errors("ENOENT", "EACCES", "EIO"),
    # ENOENT is the end of a directory that was removed in the meantime.
    "getdents64": errors("EIO"),
    "getcwd": errors("ENOENT", "ENOMEM"),
    "readlink": errors("ENOENT", "EACCES", "EIO"),
    "readlinkat": errors("ENOENT", "EACCES", "EIO"),
    "chdir": errors("ENOENT", "EACCES", "EIO"),
    "mkdir": errors("EACCES", "ENOSPC", "EIO"),
    "mkdirat": errors("EACCES", "ENOSPC", "EIO"),
    "rename": errors("EACCES", "EIO", "ENOSPC"),
    "renameat": errors("EACCES", "EIO", "ENOSPC"),
    "renameat2": errors("EACCES", "EIO", "ENOSPC"),
    "link": errors("EACCES", "EIO", "ENOSPC"),
    "linkat": errors("EACCES", "EIO", "ENOSPC"),
    "unlink": errors("EACCES", "EIO"),
    "unlinkat": errors("EACCES", "EIO"),
    "fsync": errors("EIO", "ENOSPC"),
    "fdatasync": errors("EIO", "ENOSPC"),
    "fchmod": errors("EPERM", "EIO"),
    "fchown": errors("EPERM", "EIO"),
    "ftruncate": errors("EIO", "EINTR"),
    "mmap": errors("ENOMEM"),
    "mremap": errors("ENOMEM"),
    "mprotect": errors("ENOMEM"),
    "madvise": errors("ENOMEM"),
    "fadvise64": errors("EINVAL"),
    "getrandom": errors("ENOSYS", "EINTR"),
    "sched_getaffinity": errors("EPERM"),
    "clone": errors("EAGAIN"),
    "clone3": errors("EAGAIN"),
    "prlimit64": errors("EPERM"),
    "prctl": errors("EINVAL"),
    "rt_sigaction": errors("EINVAL"),
}

SYSTEM_NOT_FAILING: Mapping[str, str] = {
    "brk": "answers a refusal with the old end, which no injected error looks like; malloc and mmap stand for it",
    "exit_group": "ends the program",
    "exit": "ends the thread",
    "futex": "waits; glibc ends the program when it fails, for that is a misuse",
    "gettid": "reads a field",
    "getpid": "reads a field",
    "ioctl": "asks whether the console is a terminal, see isatty",
    "munmap": "gives back",
    "rseq": "registers; glibc does without",
    "rt_sigprocmask": "fails when misused alone",
    "rt_sigreturn": "ends the handling of a signal",
    "sched_yield": "cannot fail on Linux",
    "set_robust_list": "registers; glibc does not look",
    "umask": "cannot fail",
}

# Only this many calls fail of functions whose calls are mostly alike, or whose number of calls differs from run to run.
MOST_CALLS: Mapping[str, int] = {"clock_gettime": 12, "mbedtls_ctr_drbg_random": 24}


def reason_not_failing(name: str) -> Optional[str]:
    """Why a function has no fault of its own; None if it should have one."""
    for pattern, reason in NOT_FAILING:
        if fnmatchcase(name, pattern):
            return reason
    return None


def functions_behind(name: str) -> Tuple[str, ...]:
    """The functions in FAULTS that cover a function; empty if there are none."""
    if name in FAULTS:
        return (name,)
    # The pattern for aligned memory is more specific than the general one, so the longest wins.
    matching = [pattern for pattern in THROUGH if fnmatchcase(name, pattern)]
    return THROUGH[max(matching, key=len)] if matching else ()


def not_accounted_for(names: Iterable[str]) -> List[str]:
    """The functions among `names` that are neither covered nor named as not failing."""
    return sorted({name for name in names if not functions_behind(name) and reason_not_failing(name) is None})


def system_calls_not_accounted_for(names: Iterable[str]) -> List[str]:
    """As above, for system calls."""
    return sorted({name for name in names if name not in SYSTEM_FAULTS and name not in SYSTEM_NOT_FAILING})


def tables() -> Dict[str, Mapping[str, Sequence[Fault]]]:
    """The faults by level."""
    return {"library": FAULTS, "system": SYSTEM_FAULTS}
