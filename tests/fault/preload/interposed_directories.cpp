// Directories and pattern expansion.
#include <dirent.h>
#include <fnmatch.h>
#include <glob.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstddef>

#include "fault/preload/interposed.h"

using sealkeeper::fault::Interposed;

extern "C" {

DIR* opendir(const char* path) {
    static constinit Interposed<DIR*(const char*)> function("opendir");
    return function.OrFail(nullptr, {path}, path);
}

DIR* fdopendir(int descriptor) {
    static constinit Interposed<DIR*(int)> function("fdopendir");
    return function.OrFail(nullptr, {nullptr, descriptor}, descriptor);
}

struct dirent* readdir(DIR* directory) {
    static constinit Interposed<struct dirent*(DIR*)> function("readdir");
    return function.OrFail(nullptr, {nullptr, dirfd(directory)}, directory);
}

int closedir(DIR* directory) {
    static constinit Interposed<int(DIR*)> function("closedir");
    return function.ThenFail(-1, {nullptr, dirfd(directory)}, directory);
}

int scandir(const char* path, struct dirent*** entries, int (*filter)(const struct dirent*),
            int (*compare)(const struct dirent**, const struct dirent**)) {
    static constinit Interposed<int(const char*, struct dirent***, int (*)(const struct dirent*),
                                    int (*)(const struct dirent**, const struct dirent**))>
        function("scandir");
    return function.OrFail(-1, {path}, path, entries, filter, compare);
}

int glob(const char* pattern, int flags, int (*onError)(const char*, int),
         glob_t* result) noexcept {
    static constinit Interposed<int(const char*, int, int (*)(const char*, int), glob_t*)> function(
        "glob");
    return function.OrReturn({pattern}, pattern, flags, onError, result);
}

int fnmatch(const char* pattern, const char* name, int flags) noexcept {
    static constinit Interposed<int(const char*, const char*, int)> function("fnmatch");
    return function.OrReturn({name}, pattern, name, flags);
}

char* getcwd(char* buffer, std::size_t size) noexcept {
    static constinit Interposed<char*(char*, std::size_t)> function("getcwd");
    return function.OrFail(nullptr, {}, buffer, size);
}

int chdir(const char* path) noexcept {
    static constinit Interposed<int(const char*)> function("chdir");
    return function.OrFail(-1, {path}, path);
}

int mkdir(const char* path, mode_t mode) noexcept {
    static constinit Interposed<int(const char*, mode_t)> function("mkdir");
    return function.OrFail(-1, {path}, path, mode);
}

// As in interposed_streams.cpp.
char* __getcwd_chk(char* buffer, std::size_t size, std::size_t /*room*/) noexcept {
    return getcwd(buffer, size);
}

}  // extern "C"
