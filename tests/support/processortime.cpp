#include "tests/support/processortime.h"

#include <QtGlobal>

#include <sys/resource.h>

namespace {

// Four times what the slowest test takes, and still a hang for whoever has to wait that long. Sanitizers and counts
// of the lines that run make a test slower.
#if defined(__SANITIZE_ADDRESS__) || defined(NORVEXA_COVERAGE)
const double LONGEST_TEST = 180.0;
#else
const double LONGEST_TEST = 30.0;
#endif
const double LONGEST_LONG_RUN = 900.0;

double Seconds(const timeval& time)
{
    return static_cast<double>(time.tv_sec) + 1e-6 * static_cast<double>(time.tv_usec);
}

double Processor_Seconds(__rusage_who who)
{
    rusage usage = {};

    getrusage(who, &usage);
    return Seconds(usage.ru_utime) + Seconds(usage.ru_stime);
}

double Processor_Seconds()
{
    return Processor_Seconds(RUSAGE_SELF) + Processor_Seconds(RUSAGE_CHILDREN);
}

} // namespace

// A long run does in one test what takes minutes.
TProcessorTimeLimit::TProcessorTimeLimit()
    : TProcessorTimeLimit(qEnvironmentVariableIsSet("NORVEXA_LONG_RUN") ? LONGEST_LONG_RUN : LONGEST_TEST)
{}

TProcessorTimeLimit::TProcessorTimeLimit(double longest) : d_longest(longest) {}

void TProcessorTimeLimit::OnTestStart(const ::testing::TestInfo& /*test*/)
{
    d_start = Processor_Seconds();
}

void TProcessorTimeLimit::OnTestEnd(const ::testing::TestInfo& /*test*/)
{
    EXPECT_LE(Processor_Seconds() - d_start, d_longest) << "seconds of processor time: this is a hang";
}
