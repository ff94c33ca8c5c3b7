#include "tests/support/sequencefixture.h"

#include <QCoreApplication>
#include <QDate>
#include <QDomDocument>
#include <QLocale>
#include <QProcess>

#include <dlfcn.h>
#include <sys/time.h>

namespace {

const int SECONDS_PER_DAY = 24 * 60 * 60;
const char* const GERMAN_SYSTEM = "de_DE.UTF-8";
int s_days_ahead = 0;

} // namespace

// The clock of this program, which Qt takes for that of the system: ahead by as many days as a test says.
extern "C" int gettimeofday(struct timeval* now, void* zone) noexcept
{
    using TCall = int (*)(struct timeval*, void*);
    static const auto SYSTEM_CALL = reinterpret_cast<TCall>(dlsym(RTLD_NEXT, "gettimeofday"));

    const int result = SYSTEM_CALL(now, zone);
    now->tv_sec += static_cast<time_t>(s_days_ahead) * SECONDS_PER_DAY;
    return result;
}

namespace {

class TSequenceDates : public TSequenceFixture
{
protected:
    void SetUp() override
    {
        if (qEnvironmentVariable("LC_ALL") == GERMAN_SYSTEM) {
            ASSERT_EQ(QLocale::system().language(), QLocale::German);
        }
    }

    void TearDown() override
    {
        s_days_ahead = 0;
        QLocale::setDefault(d_locale);
    }

    static QString In_English(const QDate& date, const QString& format)
    {
        return QLocale(QLocale::C).toString(date, format);
    }

    /// Adds an identifier with the date of today, saves, and opens the file 40 days later.
    void Add_Save_And_Open_On_Another_Day()
    {
        Add_Component("Gauge");
        Add_Identifier("SN 1");
        Save_As(Path("gauge.norvexa"));

        s_days_ahead = 40;
        Drop_Files({Path("gauge.norvexa")});
        ASSERT_EQ(QDate::currentDate(), d_today.addDays(40));
        Select_Entry("Gauge");
        Select_Identifier("SN 1");
    }

    /// The identifier as it was added today, with Qt's form of the date in English.
    TBudgetFile Expected() const
    {
        TBudgetFile budget;
        budget.document.Add_Component("Gauge");
        budget.document.Component_Add_Identifier("Gauge", "SN 1");
        Change_Identifier(&budget.document, "Gauge", "SN 1", [this](TNorvexaData::TComponentInstance* record) {
            record->calibration_date = In_English(d_today, "ddd MMM d yyyy");
            record->calibration_due_date = record->calibration_date;
        });
        return budget;
    }

    QString Shown_Dates() const { return Component_Page().split("; ").at(1); }

    QDate d_today = QDate::currentDate();
    QLocale d_locale;
};

} // namespace

TEST_F(TSequenceDates, An_identifier_opened_on_another_day_shows_and_keeps_the_day_on_which_it_was_added)
{
    Add_Save_And_Open_On_Another_Day();

    const QString added = In_English(d_today, "ddd MMM d yyyy");
    EXPECT_EQ(Shown_Dates(), added + ", " + added);
    EXPECT_EQ(Check_Unchanged(), Model_Of(Expected()));
}

TEST_F(TSequenceDates, The_day_of_saving_has_two_digits)
{
    const QDate fifth = QDate(d_today.year(), d_today.month(), 5).addMonths(1);
    Add_Component("Gauge");

    s_days_ahead = static_cast<int>(d_today.daysTo(fifth));
    Save_As(Path("gauge.norvexa"));

    QDomDocument file;
    ASSERT_TRUE(file.setContent(Bytes(Path("gauge.norvexa"))));
    EXPECT_EQ(file.documentElement().attribute("File_Revision"),
              In_English(fifth, "MMM") + " 05 " + In_English(fifth, "yyyy"));
}

TEST_F(TSequenceDates, A_length_typed_on_another_day_leaves_the_dates_alone)
{
    Add_Save_And_Open_On_Another_Day();

    Enter("component_length", "7.5");

    TBudgetFile expected = Expected();
    Change_Identifier(&expected.document, "Gauge", "SN 1",
                      [](TNorvexaData::TComponentInstance* record) { record->length = 7.5; });
    EXPECT_EQ(Check(), Model_Of(expected));
}

TEST_F(TSequenceDates, A_date_changed_on_another_day_is_that_date_and_the_other_stays)
{
    Add_Save_And_Open_On_Another_Day();
    const QDate due(d_today.year() + 3, d_today.month(), d_today.day());
    if (!due.isValid()) {
        GTEST_SKIP() << "the 29th of February has no such date";
    }

    Enter_Year("calibration_due_date", QByteArray::number(due.year()).constData());

    TBudgetFile expected = Expected();
    Change_Identifier(&expected.document, "Gauge", "SN 1", [&due](TNorvexaData::TComponentInstance* record) {
        record->calibration_due_date = In_English(due, "MMM d yyyy");
    });
    EXPECT_EQ(Check(), Model_Of(expected));
}

TEST_F(TSequenceDates, A_date_with_German_names_is_free_text_and_stays_when_it_is_opened_on_another_day)
{
    TBudgetFile budget = Expected();
    Change_Identifier(&budget.document, "Gauge", "SN 1", [](TNorvexaData::TComponentInstance* record) {
        record->calibration_date = "Di Mai 5 2026";
        record->calibration_due_date = "Tue May 5 2026";
    });
    s_days_ahead = 40;

    Open_Budget(budget);
    Select_Entry("Gauge");
    Select_Identifier("SN 1");

    EXPECT_EQ(Shown_Dates(), In_English(d_today.addDays(40), "ddd MMM d yyyy") + ", Tue May 5 2026");
    EXPECT_EQ(Check_Unchanged(), Model_Of(budget));
}

TEST_F(TSequenceDates, A_German_default_locale_changes_neither_what_is_saved_nor_what_is_shown)
{
    QLocale::setDefault(QLocale(QLocale::German));
    Add_Save_And_Open_On_Another_Day();

    const QString added = In_English(d_today, "ddd MMM d yyyy");
    EXPECT_EQ(Shown_Dates(), added + ", " + added);
    Enter("component_length", "7.5");

    TBudgetFile expected = Expected();
    Change_Identifier(&expected.document, "Gauge", "SN 1",
                      [](TNorvexaData::TComponentInstance* record) { record->length = 7.5; });
    EXPECT_EQ(Check(), Model_Of(expected));
}

// Qt reads the system's locale once, so a process of its own goes through the tests above.
TEST_F(TSequenceDates, A_German_system_changes_neither_what_is_saved_nor_what_is_shown)
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("LC_ALL", GERMAN_SYSTEM);
    process.setProcessEnvironment(environment);
    process.start(QCoreApplication::applicationFilePath(), {"--gtest_filter=*another_day*"});

    ASSERT_TRUE(process.waitForFinished());
    const QByteArray output = process.readAll();
    EXPECT_EQ(process.exitCode(), 0) << output.constData();
    EXPECT_TRUE(output.contains("[  PASSED  ] 4 tests.")) << output.constData();
}
