# What every target of the program is compiled with.
add_library(norvexa_settings INTERFACE)

target_include_directories(norvexa_settings INTERFACE ${PROJECT_SOURCE_DIR})
target_compile_definitions(norvexa_settings INTERFACE QT_NO_CAST_TO_ASCII QT_DEPRECATED_WARNINGS)

target_compile_options(norvexa_settings INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion
    # GCC does not count it to the conversions.
    $<$<CXX_COMPILER_ID:Clang>:-Wno-sign-conversion>
    # Failed assertions name their source relative to the checkout: "../core/expression.cpp".
    -fmacro-prefix-map=${PROJECT_SOURCE_DIR}=..
    # Fused multiply-adds would change the last digit from machine to machine.
    -ffp-contract=off
    # Nobody replaces a function of the program at run time: each may be inlined into the others of its source.
    -fno-semantic-interposition
    $<$<BOOL:${NORVEXA_WARNINGS_AS_ERRORS}>:-Werror>)

if(NORVEXA_SANITIZE)
    target_compile_options(norvexa_settings INTERFACE
        -fsanitize=${NORVEXA_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(norvexa_settings INTERFACE -fsanitize=${NORVEXA_SANITIZE})
endif()

if(NORVEXA_COVERAGE)
    # Counts of tests with threads would come out wrong, even negative, without the atomic updates.
    target_compile_options(norvexa_settings INTERFACE --coverage -fprofile-update=atomic)
    target_link_options(norvexa_settings INTERFACE --coverage)
endif()
