#include "core/number.h"
#include "tests/support/sequencefixture.h"

#include <QFile>
#include <QLineEdit>

#include <string>

namespace {

const int MOST_LENGTHS = 121;

struct TRange
{
    const char* name;
    const char* start;
    const char* end;
    const char* increment;
    QString message; ///< of a range that is refused
    int lengths;     ///< of a range that is not
};

void PrintTo(const TRange& row, std::ostream* stream)
{
    *stream << row.name;
}

QString No_Range()
{
    return "ERR:  Start and End position invalid.  0.000000  to  0.000000";
}

QString No_Step(const QString& increment)
{
    return "ERR:  Increment cannot be zero or negative.  " + increment;
}

QString Too_Many_Pages(const QString& pages)
{
    return QString("ERR:  Range and increment will create a %1 page report (maximum is 10)").arg(pages);
}

const TRange RANGES[] = {
    {"An_end_that_is_infinite", "0", "inf", "50", No_Range(), 0},
    {"An_increment_that_is_infinite", "0", "1000", "inf", No_Step("0.000000"), 0},
    {"An_end_and_an_increment_that_are_infinite", "0", "inf", "inf", No_Range(), 0},
    {"An_end_that_is_no_number", "0", "nan", "50", No_Range(), 0},
    {"An_increment_that_is_no_number", "0", "1000", "nan", No_Step("0.000000"), 0},
    {"A_start_that_is_no_number", "nan", "1000", "50", QString(), 21},
    {"A_start_that_is_infinite", "-inf", "1000", "50", QString(), 21},
    {"An_increment_that_moves_nothing", "0", "1000", "1e-300", No_Step("0.000000"), 0},
    {"An_end_that_no_increment_reaches", "0", "1e300", "50", No_Step("50.000000"), 0},
    {"Ten_thousand_million_lengths", "0", "1e10", "1", Too_Many_Pages("833333334"), 0},
    {"More_lengths_than_a_number_of_32_bits", "0", "2200000000", "1", Too_Many_Pages("183333334"), 0},
    {"A_start_that_the_increment_does_not_move", "1e18", "1.000000000000001e18", "50", No_Step("50.000000"), 0},
    {"A_start_between_whose_neighbours_the_increment_falls", "1e16", "10000000000000100", "1", No_Step("1.000000"), 0},
    {"A_last_length_that_the_increment_does_not_move", "9007199254740987", "9007199254740991", "1", No_Step("1.000000"),
     0},
    {"A_last_length_that_the_increment_still_moves", "9007199254740980", "9007199254740990", "1", QString(), 11},
    {"Every_other_length_that_the_increment_does_not_move", "9007199254740994", "9007199254740998", "1",
     No_Step("1.000000"), 0},
    {"A_last_length_beyond_all_numbers", "0", "1e308", "1.7e308", No_Step(Fixed_Text(1.7e308, 6)), 0},
};

class TSequenceRanges : public TSequenceFixture, public ::testing::WithParamInterface<TRange>
{
protected:
    void Export()
    {
        if (GetParam().message.isEmpty()) {
            d_answer.Choose_File(Path("export.csv"));
        }
        Click_Export_CSV();
    }

    void Expect_Refused_Or_Ended()
    {
        if (!GetParam().message.isEmpty()) {
            EXPECT_EQ(Log(), GetParam().message);
            EXPECT_EQ(Page(), "Log");
            EXPECT_FALSE(QFile::exists(Path("export.csv")));
            return;
        }
        EXPECT_EQ(Page(), "Report");
        EXPECT_EQ(Exported_Lengths(), GetParam().lengths);
        EXPECT_LE(Exported_Lengths(), MOST_LENGTHS);
    }

    /// The file holds what the fields count as, with three decimals.
    static TBudgetFile Expected()
    {
        TBudgetFile budget = Linear_Workshop();
        budget.input_data.report_end = Fixed_Text(Finite_Number(GetParam().end), 3).toDouble();
        budget.input_data.report_increment = Fixed_Text(Finite_Number(GetParam().increment), 3).toDouble();
        return budget;
    }

    int Exported_Lengths() const
    {
        const QByteArray head = ",,Position (mm),";
        for (const QByteArray& line : Bytes(Path("export.csv")).split('\n')) {
            if (line.startsWith(head)) {
                return line.mid(head.size()).count(',') + 1;
            }
        }
        return 0;
    }
};

/// What stands between the tags of the element, at its only place in the file.
void Replace_Content(QByteArray* bytes, const QByteArray& element, const QByteArray& content)
{
    const int begin = bytes->indexOf("<" + element + ">") + element.size() + 2;
    const int end = bytes->indexOf("</" + element + ">");
    ASSERT_GT(end, begin);
    bytes->replace(begin, end - begin, content);
}

} // namespace

TEST_P(TSequenceRanges, Typed_into_the_fields_is_refused_at_once_or_ends)
{
    Open_Budget(Linear_Workshop());
    Show_Report("Length");
    Type_Range(GetParam().start, GetParam().end, GetParam().increment);

    Export();

    Expect_Refused_Or_Ended();
    EXPECT_EQ(Check(), Model_Of(Expected()));
}

TEST_P(TSequenceRanges, From_a_file_is_refused_at_once_or_ends)
{
    Write_Budget(Linear_Workshop(), Path("budget.norvexa"));
    QByteArray bytes = Bytes(Path("budget.norvexa"));
    Replace_Content(&bytes, "Report_End", GetParam().end);
    Replace_Content(&bytes, "Report_Increment", GetParam().increment);
    Write_Bytes(Path("range.norvexa"), bytes);
    Drop_Files({Path("range.norvexa")});
    Show_Report("Length");
    Show_Page("Variables");
    Replace_Text(Find<QLineEdit>("start_position"), GetParam().start);
    Show_Page("Report");

    Export();

    Expect_Refused_Or_Ended();
    EXPECT_EQ(Check(), Model_Of(Expected()));
}

INSTANTIATE_TEST_SUITE_P(Table, TSequenceRanges, ::testing::ValuesIn(RANGES),
                         [](const auto& row) { return std::string(row.param.name); });
