#include "src/reportwidget.h"

#include "tests/support/exportfixture.h"
#include "tests/support/pdftext.h"

#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <memory>

namespace {

using TItem = TReportWidget::TReportItemData;
using TRecord = TReportWidget::TReportData;

const QString PUBLISHER = NORVEXA_PUBLISHER;

/// A page that was filled like by an export, and what a reader finds in its document.
class TReportWidgetPDF : public ::testing::Test
{
protected:
    explicit TReportWidgetPDF(const QString& group = "Long scales") { Choose_Group(group); }

    void Choose_Group(const QString& group)
    {
        d_page.Update_Report_Groups({group});
        d_page.findChild<QComboBox*>("report_group")->setCurrentText(group);
    }

    /// Adds `count` lengths, 100 mm apart, of one item whose value is `value` and a thousandth of the length in m.
    void Add_Component(const QString& component, const QString& item, int count, double value = 0.001,
                       const QString& expression = "a+b", const QString& identifier = QString())
    {
        for (int index = 0; index < count; ++index) {
            TRecord record;
            record.name = component;
            record.identifier = identifier;
            record.items = {{item, "Constant", expression, "1.000000", "Rectangular", "Type B", 1.732051, QString(),
                             value + 0.0001 * index}};
            d_page.Add_Export_Data(record, 100.0 * index);
        }
    }

    void Add_Variable(const QString& source, const QString& name, const std::vector<double>& values)
    {
        d_page.Add_Export_Variable_Data({source, name, values});
    }

    std::vector<TPrintedPage> Print()
    {
        d_page.Update_Export_Uncertainty_Data();
        d_page.Format_Export_Data();
        d_page.Write_Export_PDF_Data(File());
        std::vector<TPrintedPage> pages = Printed_Pages(File());
        for (const TPrintedPage& page : pages) {
            EXPECT_EQ(page.Misplaced_Words(), QStringList());
        }
        return pages;
    }

    QString File() const { return d_folder.filePath("report.pdf"); }

    QTemporaryDir d_folder;
    TReportWidget d_page;
};

QString Foot(int page)
{
    return PUBLISHER + QString(" Page %1").arg(page);
}

/// The rows of all pages, without their titles and feet.
QStringList Table_Rows(const std::vector<TPrintedPage>& pages)
{
    QStringList rows;
    for (const TPrintedPage& page : pages) {
        rows += page.Rows().mid(1, page.Rows().size() - 2);
    }
    return rows;
}

/// Of the words of a page that stand between two places, from top to bottom, without blanks.
QString Column_Text(const TPrintedPage& page, double left, double right)
{
    std::vector<TPrintedWord> words = page.words;
    std::stable_sort(words.begin(), words.end(), [](const TPrintedWord& one, const TPrintedWord& other) {
        return one.box.top() < other.box.top();
    });
    QString text;
    for (const TPrintedWord& word : words) {
        if (word.box.left() >= left && word.box.left() < right) {
            text += word.text;
        }
    }
    return text;
}

/// The left edge of a column, in points, on A4 paper.
double Column_Left(int column)
{
    const double dots = 420 + column * 733;
    return dots * 72 / 1200 - 0.5;
}

TPrintedWord Word(const TPrintedPage& page, const QString& text)
{
    const auto found = std::find_if(page.words.begin(), page.words.end(),
                                    [&text](const TPrintedWord& word) { return word.text == text; });
    return found != page.words.end() ? *found : TPrintedWord();
}

/// All words of the page with this text, from top to bottom.
std::vector<TPrintedWord> Words(const TPrintedPage& page, const QString& text)
{
    std::vector<TPrintedWord> words;
    std::copy_if(page.words.begin(), page.words.end(), std::back_inserter(words),
                 [&text](const TPrintedWord& word) { return word.text == text; });
    std::sort(words.begin(), words.end(),
              [](const TPrintedWord& one, const TPrintedWord& other) { return one.box.top() < other.box.top(); });
    return words;
}

int Colour_Changes_To(const QImage& picture, int x, const QColor& colour)
{
    int count = 0;
    for (int y = 1; y < picture.height(); ++y) {
        count += picture.pixelColor(x, y) == colour && picture.pixelColor(x, y - 1) != colour ? 1 : 0;
    }
    return count;
}

} // namespace

// Pages

TEST_F(TReportWidgetPDF, Prints_definition_global_variables_and_data_with_the_formula)
{
    Add_Variable(QString(), "CTEm", {0.0115, 0.0115, 0.0115});
    Add_Variable("Scale", "Lc", {0.0, 12.25, 3456.5});
    Add_Component("Scale", "Drift", 3, 0.001, "SQRT(a)", "SN 1");

    const std::vector<TPrintedPage> pages = Print();

    ASSERT_EQ(pages.size(), 3U);
    EXPECT_EQ(pages[0].Rows(), QStringList({"Budget Definition - Long scales", "Scale Component SN 1",
                                            "Source Value Expression Type Sensitivity Distribution Divisor",
                                            "Drift Constant SQRT(a) Type B 1.000000 Rectangular 1.732051", Foot(1)}));
    EXPECT_EQ(pages[1].Rows(), QStringList({"Global Variables", "CTEm 0.011500", Foot(2)}));
    EXPECT_EQ(pages[2].Rows(),
              QStringList({"Budget Data - Long scales", "Position (mm) 0.0 100.0 200.0", "Scale Component SN 1",
                           "Local Variables Lc 0.00000 12.2500 3456.50", "Source Drift 0.00100 0.00110 0.00120",
                           "Uncertainty", "Combined 0.00100 0.00110 0.00120",
                           "Uc(K=1): 0.00100+0.00100L+0.00000L^2 mm (L is length in meters)",
                           "Uc(K=2): 0.00200+0.00200L+0.00000L^2 mm (L is length in meters)", Foot(3)}));
}

TEST_F(TReportWidgetPDF, Prints_an_error_in_place_of_a_formula)
{
    Add_Component("Scale", "Drift", 1);

    EXPECT_EQ(Print().back().Rows(),
              QStringList({"Budget Data - Long scales", "Position (mm) 0.0", "Scale Component", "Source Drift 0.00100",
                           "Uncertainty", "Combined 0.00100", "Uc(K=1): ERR", "Uc(K=2): ERR", Foot(3)}));
}

TEST_F(TReportWidgetPDF, Is_a_landscape_document_named_after_the_group)
{
    Add_Component("Scale", "Drift", 1);
    Print();

    const QMap<QString, QString> properties = Pdf_Properties(File());
    EXPECT_EQ(properties["Page size"], "842 x 595 pts (A4)");
    EXPECT_EQ(properties["Page rot"], "0");
    EXPECT_EQ(properties["Pages"], "3");
    EXPECT_EQ(properties["Title"], "Long scales");
    EXPECT_EQ(properties["Creator"], PUBLISHER);
}

TEST_F(TReportWidgetPDF, Embeds_its_fonts)
{
    Add_Component("Scale", "Drift", 1);
    Print();
    EXPECT_EQ(Pdf_Fonts(File()), QStringList({"DejaVuSans-Bold: embedded", "DejaVuSans: embedded"}));
}

TEST_F(TReportWidgetPDF, Cells_stand_in_their_columns)
{
    Add_Component("Scale", "Drift", 11);
    const std::vector<TPrintedPage> pages = Print();

    EXPECT_NEAR(Word(pages[0], "Budget").box.left(), Column_Left(0) + 0.5, 0.1);
    EXPECT_NEAR(Word(pages[0], "Source").box.left(), Column_Left(1) + 0.5, 0.1);
    EXPECT_NEAR(Word(pages[0], "Divisor").box.left(), Column_Left(17) + 0.5, 0.1);
    EXPECT_NEAR(Word(pages[2], "Combined").box.left(), Column_Left(3) + 0.5, 0.1);
    EXPECT_NEAR(Word(pages[2], "0.0").box.left(), Column_Left(7) + 0.5, 0.1);
    EXPECT_NEAR(Word(pages[2], "1000.0").box.left(), Column_Left(17) + 0.5, 0.1);
    EXPECT_NEAR(Word(pages[2], "Uc(K=1):").box.left(), Column_Left(3) + 0.5, 0.1);
}

TEST_F(TReportWidgetPDF, The_foot_has_the_publisher_on_the_left_and_the_page_number_on_the_right)
{
    Add_Component("Scale", "Drift", 1);
    const std::vector<TPrintedPage> pages = Print();

    for (const TPrintedPage& page : pages) {
        const TPrintedWord publisher = Word(page, PUBLISHER.section(' ', 0, 0));
        EXPECT_NEAR(publisher.box.left(), 842 * 0.03, 0.2);
        EXPECT_GT(publisher.box.top(), 595 - 12);
        EXPECT_NEAR(Word(page, "Page").box.top(), publisher.box.top(), 0.1);
        const auto rightmost = std::max_element(
            page.words.begin(), page.words.end(),
            [](const TPrintedWord& one, const TPrintedWord& other) { return one.box.right() < other.box.right(); });
        EXPECT_NEAR(rightmost->box.right(), 842 * 0.97, 0.5) << rightmost->text.toStdString();
        EXPECT_EQ(page.Rows().last(), Foot(1 + static_cast<int>(&page - pages.data())));
    }
}

TEST_F(TReportWidgetPDF, Titles_are_larger_than_cells_and_the_foot_is_smaller)
{
    Add_Component("Scale", "Drift", 1);
    const TPrintedPage page = Print().front();
    const double cell_height = Word(page, "Drift").box.height();

    EXPECT_NEAR(Word(page, "Budget").box.height(), cell_height * 10 / 8, 0.1);
    EXPECT_NEAR(Word(page, "Source").box.height(), cell_height, 0.1);
    EXPECT_NEAR(Word(page, "Page").box.height(), cell_height * 6 / 8, 0.1);
}

TEST_F(TReportWidgetPDF, Titles_and_headings_are_bold_cells_and_the_foot_are_not)
{
    Choose_Group("Page");
    Add_Component("Page", "Page", 1);
    const std::vector<TPrintedWord> words = Words(Print().front(), "Page");
    ASSERT_EQ(words.size(), 4U); // in the title, the heading, the item and the foot
    const double title = words[0].box.width() / 10, heading = words[1].box.width() / 8;
    const double cell = words[2].box.width() / 8, foot = words[3].box.width() / 6;

    EXPECT_NEAR(title / heading, 1.0, 0.01);
    EXPECT_NEAR(foot / cell, 1.0, 0.01);
    EXPECT_GT(heading / cell, 1.05);
}

// On A4 paper the row height is 157 dots of 1/1200 inch, so that a page has 53 slots.
TEST_F(TReportWidgetPDF, Rows_follow_at_the_row_height_and_two_slots_at_the_foot_stay_empty)
{
    constexpr double ROW_HEIGHT = 157 * 72 / 1200.0;
    for (int variable = 1; variable <= 60; ++variable) {
        Add_Variable(QString(), "v" + QString::number(variable), {1.0});
    }
    const std::vector<TPrintedPage> pages = Print();
    ASSERT_EQ(pages.size(), 4U);
    const double first_row = Word(pages[1], "v1").box.top();

    EXPECT_NEAR(Word(pages[1], "Global").box.top(), 840 * 72 / 1200.0, 0.5);
    EXPECT_NEAR(first_row, 840 * 72 / 1200.0 + 2 * ROW_HEIGHT, 0.5);
    EXPECT_NEAR(Word(pages[1], "v51").box.top() - first_row, 50 * ROW_HEIGHT, 0.1);
    EXPECT_NEAR(Word(pages[1], "Page").box.top(), 9759 * 72 / 1200.0, 0.5);
    EXPECT_EQ(pages[1].Rows().size(), 1 + 51 + 1);
    EXPECT_EQ(pages[2].Rows().mid(0, 2), QStringList({"Global Variables", "v52 1.000000"}));
    EXPECT_NEAR(Word(pages[2], "v52").box.top(), first_row, 0.1);
    EXPECT_EQ(pages[2].Rows().last(), Foot(3));
    EXPECT_EQ(pages[3].Rows().last(), Foot(4));
}

TEST_F(TReportWidgetPDF, Rules_are_grey_across_the_columns_and_texts_are_black)
{
    Add_Component("Scale", "Drift", 1);
    Print();
    const QImage picture = Pdf_Picture(File(), 1, 300);
    int rule_rows = 0;

    for (int y = 0; y < picture.height(); ++y) {
        std::vector<int> grey;
        for (int x = 0; x < picture.width(); ++x) {
            const QColor colour = picture.pixelColor(x, y);
            ASSERT_TRUE(colour == Qt::white || colour == Qt::black || colour == QColor(164, 164, 164))
                << colour.name().toStdString() << " at " << x << ", " << y;
            if (colour == QColor(164, 164, 164)) {
                grey.push_back(x);
            }
        }
        if (!grey.empty()) {
            EXPECT_NEAR(grey.front(), 420 / 4.0, 2.0);
            EXPECT_NEAR(grey.back(), 13612 / 4.0, 2.0);
            ++rule_rows;
        }
    }
    EXPECT_GE(rule_rows, 1);
    EXPECT_LE(rule_rows, 3);
}

TEST_F(TReportWidgetPDF, Grey_rules_stand_under_the_headings)
{
    Add_Component("Scale", "Drift", 1);
    Add_Component("Probe", "Form", 1);
    Print();

    const QColor grey(164, 164, 164);
    const auto rules = [this, &grey](int page) {
        const QImage picture = Pdf_Picture(File(), page, 300);
        return Colour_Changes_To(picture, picture.width() * 96 / 100, grey);
    };
    EXPECT_EQ(rules(1), 2); // under the column heads of two components
    EXPECT_EQ(rules(2), 0);
    EXPECT_EQ(rules(3), 4); // under the positions, two components and the uncertainty
}

TEST_F(TReportWidgetPDF, Replaces_an_older_document)
{
    Add_Component("Scale", "Drift", 1);
    Print();
    d_page.Clear_Export();
    Add_Component("Probe", "Form", 1);
    EXPECT_EQ(Print().front().Rows().value(1), "Probe Component");
}

TEST_F(TReportWidgetPDF, Prints_empty_pages_when_nothing_was_formatted)
{
    d_page.Write_Export_PDF_Data(File());
    QStringList rows;
    for (const TPrintedPage& page : Printed_Pages(File())) {
        rows += page.Rows();
    }
    EXPECT_EQ(rows, QStringList({"Budget Definition - Long scales", Foot(1), "Global Variables", Foot(2),
                                 "Budget Data - Long scales", Foot(3)}));
}

// Texts

TEST_F(TReportWidgetPDF, Cells_with_double_quotes_print_without_them)
{
    Add_Component("The \"5\" probe", "a \"b\", c", 1, 0.001, "\"d\"");
    const QStringList rows = Table_Rows(Print());
    EXPECT_EQ(rows.value(0), "The 5 probe Component");
    EXPECT_EQ(rows.value(2), "a b, c Constant d Type B 1.000000 Rectangular 1.732051");
}

TEST_F(TReportWidgetPDF, Letters_are_never_joined_so_that_a_search_finds_them)
{
    Add_Component("First office fjord", "fluffy", 1);
    const QString text = Table_Rows(Print()).join(' ');
    EXPECT_TRUE(text.contains("First office fjord Component")) << text.toStdString();
    EXPECT_TRUE(text.contains("fluffy")) << text.toStdString();
}

TEST_F(TReportWidgetPDF, Names_that_look_like_a_format_print_as_they_are)
{
    Choose_Group("Group %1");
    Add_Component("%2", "%1", 1);
    const std::vector<TPrintedPage> pages = Print();
    EXPECT_EQ(pages.front().Rows().first(), "Budget Definition - Group %1");
    EXPECT_EQ(pages.front().Rows().value(1), "%2 Component");
    EXPECT_TRUE(pages.back().Rows().contains("Source %1 0.00100"));
}

TEST_F(TReportWidgetPDF, Names_of_sixty_characters_print_whole_in_every_section)
{
    const QString group = "Group_of_every_long_scale_of_the_machine_in_the_climate_room_";
    const QString component = "Component_with_the_straightness_of_the_guideways_of_axis_X_1";
    const QString item = "Item_with_the_long_term_stability_of_the_linear_scale_and_it";
    const QString identifier = "Identifier_with_the_number_of_a_certificate_and_with_a_date_";
    const QString variable = "Variable_with_the_mean_temperature_difference_of_the_machine";
    ASSERT_EQ(item.size(), 60);
    Choose_Group(group);
    Add_Variable(QString(), variable, std::vector<double>(12, 1.0));
    Add_Variable(component, variable, std::vector<double>(12, 2.0));
    Add_Component(component, item, 12, 0.001, "a+b", identifier);

    const std::vector<TPrintedPage> pages = Print();

    ASSERT_EQ(pages.size(), 3U);
    const QString title = component + " Component " + identifier;
    EXPECT_EQ(pages[0].Rows().value(0), "Budget Definition - " + group);
    EXPECT_EQ(pages[0].Rows().value(1), title);
    EXPECT_EQ(Column_Text(pages[0], Column_Left(1), Column_Left(5)).count(item), 1);
    EXPECT_EQ(Column_Text(pages[1], Column_Left(1), Column_Left(5)).count(variable), 2);
    EXPECT_EQ(pages[2].Rows().value(0), "Budget Data - " + group);
    EXPECT_EQ(pages[2].Rows().count(title), 2);
    const QString labels = Column_Text(pages[2], Column_Left(3), Column_Left(7));
    EXPECT_EQ(labels.count(variable), 2);
    EXPECT_EQ(labels.count(item), 2);
}

TEST_F(TReportWidgetPDF, Long_expressions_are_wrapped_and_print_whole)
{
    QString expression = "0.00012345";
    for (int index = 0; index < 60; ++index) {
        expression += QString("+SQRT(Td*%1.0005/L)").arg(index);
    }
    Add_Component("Scale", "Drift", 1, 0.001, expression);
    Add_Component("Probe", "Form", 1, 0.001, QString(6000, 'x'));

    const std::vector<TPrintedPage> pages = Print();

    QString printed;
    for (const TPrintedPage& page : pages) {
        printed += page.Rows().first().startsWith("Budget Definition")
                       ? Column_Text(page, Column_Left(7), Column_Left(12)).remove("Expression")
                       : QString();
    }
    EXPECT_EQ(printed, expression + QString(6000, 'x'));
}

TEST_F(TReportWidgetPDF, A_group_name_longer_than_the_page_is_wide_prints_in_several_lines)
{
    const QString group = QString("Scales of the machine ").repeated(15).trimmed();
    Choose_Group(group);
    Add_Component("Scale", "Drift", 1);
    const QStringList rows = Print().front().Rows();
    const int title_lines = rows.indexOf("Scale Component");
    EXPECT_GT(title_lines, 2);
    EXPECT_EQ(rows.mid(0, title_lines).join(' '), "Budget Definition - " + group);
}

TEST_F(TReportWidgetPDF, Wide_numbers_stand_whole_without_touching_each_other)
{
    std::vector<double> values(11);
    for (int index = 0; index < 11; ++index) {
        values[static_cast<std::size_t>(index)] = -1234567890.25 - index;
    }
    Add_Variable("Scale", "Count", values);
    Add_Component("Scale", "Drift", 11);
    const TPrintedPage page = Print().back();
    for (const double value : values) {
        EXPECT_EQ(Word(page, QString::number(value, 'f', 2)).text, QString::number(value, 'f', 2));
    }
}

// Many lengths

TEST_F(TReportWidgetPDF, A_hundred_lengths_stand_in_groups_of_eleven_with_their_labels)
{
    constexpr int LENGTHS = 100;
    Add_Variable("Scale", "Lc", std::vector<double>(LENGTHS, 4.0));
    Add_Component("Scale", "Drift", LENGTHS);
    const QStringList rows = Table_Rows(Print());

    QStringList expected;
    for (int first = 0; first < LENGTHS; first += 11) {
        QString positions = "Position (mm)", variables = "Local Variables Lc", items = "Source Drift",
                combined = "Combined";
        for (int index = first; index < std::min(first + 11, LENGTHS); ++index) {
            positions += ' ' + QString::number(100.0 * index, 'f', 1);
            variables += " 4.00000";
            items += ' ' + QString::number(0.001 + 0.0001 * index, 'f', 5);
            combined += ' ' + QString::number(0.001 + 0.0001 * index, 'f', 5);
        }
        expected << positions << "Scale Component" << variables << items << "Uncertainty" << combined;
    }
    const int first_row = rows.indexOf(expected.first());
    EXPECT_EQ(rows.mid(first_row, expected.size()), expected);
    EXPECT_TRUE(rows.value(first_row + expected.size()).startsWith("Uc(K=1): "));
    EXPECT_TRUE(rows.value(first_row + expected.size() + 1).startsWith("Uc(K=2): "));
    EXPECT_EQ(rows.size(), first_row + expected.size() + 2);
}

TEST_F(TReportWidgetPDF, Groups_that_a_page_can_hold_are_not_parted)
{
    for (int component = 1; component <= 10; ++component) {
        Add_Component(QString("Scale %1").arg(component), "Drift", 100);
    }
    const std::vector<TPrintedPage> pages = Print();

    ASSERT_EQ(pages.size(), 2U + 10U);
    for (std::size_t page = 2; page < pages.size(); ++page) {
        const QStringList rows = pages[page].Rows();
        EXPECT_TRUE(rows.value(1).startsWith("Position (mm) ")) << rows.value(1).toStdString();
        EXPECT_EQ(rows.filter("Position (mm)").size(), 1);
        EXPECT_EQ(rows.filter("Combined").size(), 1);
    }
}

TEST_F(TReportWidgetPDF, Pages_of_a_group_longer_than_a_page_have_its_positions_again)
{
    for (int component = 1; component <= 40; ++component) {
        Add_Component(QString("Scale %1").arg(component), "Drift", 2);
    }
    const std::vector<TPrintedPage> pages = Print();
    int data_pages = 0;
    for (const TPrintedPage& page : pages) {
        const QStringList rows = page.Rows();
        if (rows.first() == "Budget Data - Long scales") {
            EXPECT_EQ(rows.value(1), "Position (mm) 0.0 100.0");
            EXPECT_FALSE(rows.value(rows.size() - 2).endsWith("Component"))
                << rows.value(rows.size() - 2).toStdString();
            EXPECT_EQ(rows.last(), Foot(1 + static_cast<int>(&page - pages.data())));
            ++data_pages;
        }
    }
    EXPECT_EQ(data_pages, 3);
}

// Failures

TEST_F(TReportWidgetPDF, Is_silent_where_no_file_can_be_created)
{
    Add_Component("Scale", "Drift", 1);
    d_page.Format_Export_Data();
    d_page.Write_Export_PDF_Data(d_folder.filePath("missing/report.pdf"));
    d_page.Write_Export_PDF_Data(d_folder.path());
    EXPECT_EQ(QDir(d_folder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot), QStringList());
    EXPECT_EQ(d_page.Last_Error(), "");
}

// Examples

namespace {

class TReportWidgetPDFOfExample : public TExportFixture, public ::testing::WithParamInterface<const char*>
{
protected:
    /// The rows under "Budget Data" of the CSV file of the group that is shown, cell by cell.
    std::vector<QStringList> Exported_Data()
    {
        const QString file = Path("report.csv");
        QFile::remove(file);
        Export_CSV(file);
        std::vector<QStringList> rows;
        bool is_data = false;
        for (const QString& line : QString::fromLatin1(Bytes(file)).split('\n')) {
            is_data = is_data || line == "Budget Data";
            if (is_data && line.count(',') > 2 && !line.contains("Uc(K=") && !line.contains("Position")) {
                rows.push_back(line.split(','));
            }
        }
        return rows;
    }

    std::vector<TPrintedPage> Printed()
    {
        const QString file = Path("report.pdf");
        QFile::remove(file);
        d_answer.Choose_File(file);
        Click_Export_PDF();
        return Printed_Pages(file);
    }
};

/// What is printed of up to eleven values, as far as they are smaller than ten.
QString Printed_Values(const QStringList& values)
{
    QStringList texts;
    for (const QString& value : values) {
        texts << QString::number(value.toDouble(), 'f', 5);
    }
    return texts.join(' ');
}

/// Whether five decimals are printed of each value, and the nine that the file has tell which.
bool Are_Printed_With_Five_Decimals(const QStringList& values)
{
    return std::all_of(values.begin(), values.end(), [](const QString& value) {
        return std::abs(value.toDouble()) < 9.99999 && !value.endsWith("5000");
    });
}

} // namespace

TEST_P(TReportWidgetPDFOfExample, Is_readable_and_has_the_values_of_the_CSV_file)
{
    Drop_Files({QString(NORVEXA_EXAMPLES "/%1.norvexa").arg(GetParam())});
    for (const QString& group : Offered_Groups().mid(1)) {
        Show_Report(group);
        const std::vector<TPrintedPage> pages = Printed();
        for (const TPrintedPage& page : pages) {
            EXPECT_EQ(page.Misplaced_Words(), QStringList());
        }
        ASSERT_GE(pages.size(), 3U);
        EXPECT_EQ(pages[0].Rows().first(), "Budget Definition - " + group);
        EXPECT_EQ(pages[1].Rows().first(), "Global Variables");
        EXPECT_EQ(pages[2].Rows().first(), "Budget Data - " + group);

        const QStringList rows =
            Table_Rows(std::vector<TPrintedPage>(pages.begin() + 2, pages.end())).filter(QRegularExpression("\\d{5}$"));
        const std::vector<QStringList> data = Exported_Data();
        EXPECT_FALSE(data.empty());
        for (const QStringList& cells : data) {
            for (int first = 3; first < cells.size(); first += 11) {
                const QStringList values = cells.mid(first, 11);
                const QString start = (cells.at(1) + ' ' + cells.at(2).section(' ', 0, 0)).trimmed();
                const QString end = ' ' + Printed_Values(values);
                EXPECT_TRUE(!Are_Printed_With_Five_Decimals(values) ||
                            std::any_of(rows.begin(), rows.end(),
                                        [&](const QString& row) { return row.startsWith(start) && row.endsWith(end); }))
                    << cells.join(',').toStdString();
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Every, TReportWidgetPDFOfExample,
                         ::testing::Values("cmm_length_0_1000", "ea402_s10_vernier_calliper", "gum_h1_end_gauge",
                                           "npl_tape_string"),
                         [](const ::testing::TestParamInfo<const char*>& row) { return std::string(row.param); });
