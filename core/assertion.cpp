#include "core/assertion.h"

#include <cstdio>
#include <cstdlib>

std::string Assertion_Source(std::string_view file)
{
    const std::size_t slash = file.rfind('/');
    const std::size_t name = slash == std::string_view::npos ? 0 : slash + 1;
    const std::size_t topic = file.find('_', name);
    const std::size_t suffix = file.rfind('.');

    if (topic == std::string_view::npos || suffix == std::string_view::npos || suffix < topic) {
        return std::string(file);
    }
    return std::string(file.substr(0, topic)).append(file.substr(suffix));
}

// GCOV_EXCL_START: who comes here aborts and counts nothing.
void Assertion_Failed(const char* file, const char* function, const char* condition) noexcept
{
    const std::string source = Assertion_Source(file);

    std::fprintf(stderr, "%s: %s: %s\n", source.c_str(), function, condition);
    std::abort();
}
// GCOV_EXCL_STOP
