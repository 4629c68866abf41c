#include "AtomicFile.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <sys/stat.h>
#include <unistd.h>

bool AtomicFile::write(char const* fileName, std::string const& content, McString& error) {
    std::string temporary = std::string(fileName) + ".XXXXXX";
    const int fd = mkstemp(temporary.data());
    if (fd < 0) {
        error.printf("cannot create a file next to \"%s\": %s", fileName, strerror(errno));
        return false;
    }
    size_t written = 0;
    while (written < content.size()) {
        const ssize_t n = ::write(fd, content.data() + written, content.size() - written);
        if (n < 0 && errno == EINTR) continue;
        if (n <= 0) break;
        written += size_t(n);
    }
    const int writeErrno = errno;
    const bool complete = written == content.size() && fsync(fd) == 0;
    if (close(fd) != 0 || !complete) {
        error.printf("cannot write \"%s\": %s", fileName, strerror(complete ? errno : writeErrno));
        unlink(temporary.c_str());
        return false;
    }
    // mkstemp makes the file private; a saved file gets the usual permissions.
    const mode_t mask = umask(0);
    umask(mask);
    chmod(temporary.c_str(), 0666 & ~mask);
    if (std::rename(temporary.c_str(), fileName) != 0) {
        error.printf("cannot replace \"%s\": %s", fileName, strerror(errno));
        unlink(temporary.c_str());
        return false;
    }
    return true;
}
