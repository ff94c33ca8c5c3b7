#pragma once

#include <string>
#include <string_view>

/// Assertions for programming errors. They are always on, in release builds too: a failed one prints one line with the
/// source, the function and the condition on stderr and aborts.
///
///     ../core/expression.cpp: Variable_Name: static_cast<unsigned int>(index) < d_variables.size()

/// The source that an assertion in `file` names: the class's own file also where the class is split over several files
/// by topic ("../src/norvexa_file.cpp" reads "../src/norvexa.cpp").
std::string Assertion_Source(std::string_view file);

[[noreturn]] void Assertion_Failed(const char* file, const char* function, const char* condition) noexcept;

#define NORVEXA_ASSERT(condition) NORVEXA_ASSERT_TEXT(condition, #condition)

/// For a condition whose stated text differs from the expression in the code.
#define NORVEXA_ASSERT_TEXT(condition, text)                                                                           \
    (static_cast<bool>(condition) ? static_cast<void>(0) : Assertion_Failed(__FILE__, __func__, text))
