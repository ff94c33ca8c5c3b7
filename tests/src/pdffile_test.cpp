#include "src/pdffile.h"

#include <gtest/gtest.h>

#include <string>

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

} // namespace
