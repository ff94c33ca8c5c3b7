#include "src/pdffile.h"

#include "src/reportwidget.h"
#include "tests/support/childprocess.h"
#include "tests/support/qtprinters.h"

#include <QDir>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <csignal>
#include <string>
#include <sys/resource.h>

namespace {

struct TDocumentRow
{
    const char* name;
    const char* bytes;
    bool is_whole;
};

const TDocumentRow DOCUMENTS[] = {
    {"Whole", "%PDF-1.4\n1 0 obj\nendobj\nstartxref\n9\n%%EOF\n", true},
    {"Without_a_last_line_break", "%PDF-1.4\nstartxref\n9\n%%EOF", true},
    {"Cut", "%PDF-1.4\n1 0 obj\nendobj\nstartx", false},
    {"Without_its_beginning", "startxref\n9\n%%EOF\n", false},
    {"Empty", "", false},
};

class TPDFDocument : public ::testing::TestWithParam<TDocumentRow>
{};

TEST_P(TPDFDocument, Is_whole_from_its_mark_to_its_end)
{
    EXPECT_EQ(Is_Whole_PDF(GetParam().bytes), GetParam().is_whole);
}

INSTANTIATE_TEST_SUITE_P(Table, TPDFDocument, ::testing::ValuesIn(DOCUMENTS),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(TPDFFile, Is_refused_where_files_are_limited_in_size_and_the_program_goes_on)
{
    const QTemporaryDir folder;
    const TReportWidget page;

    const QString result = In_Child([&]() -> QString {
        const struct rlimit limit = {1000, RLIM_INFINITY};
        QString reason;
        if (std::signal(SIGXFSZ, SIG_DFL) == SIG_ERR || setrlimit(RLIMIT_FSIZE, &limit) != 0) {
            return "no limit set";
        }
        return Write_PDF_File(page, folder.filePath("export.pdf"), &reason) ? "written" : reason;
    });

    EXPECT_EQ(result, "The document could not be completed.");
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot), QStringList());
}

} // namespace
