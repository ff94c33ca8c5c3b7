#include "tests/support/childprocess.h"

#ifdef NORVEXA_COVERAGE
#include <sys/resource.h>

// The header knows no C++.
extern "C" {
#include <gcov.h>
}

namespace {

const uid_t USER = geteuid();

/// Files need a descriptor and room.
bool Lift_Limits()
{
    const struct rlimit size = {RLIM_INFINITY, RLIM_INFINITY};
    struct rlimit files = {};

    getrlimit(RLIMIT_NOFILE, &files);
    files.rlim_cur = files.rlim_max;
    return setrlimit(RLIMIT_FSIZE, &size) == 0 && setrlimit(RLIMIT_NOFILE, &files) == 0;
}

} // namespace

void Hand_Over_Counts()
{
    if (seteuid(USER) == 0 && Lift_Limits()) {
        __gcov_dump();
    }
}
#else
void Hand_Over_Counts() {}
#endif
