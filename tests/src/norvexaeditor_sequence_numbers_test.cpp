#include "core/number.h"
#include "tests/support/sequencefixture.h"

#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTreeWidget>

#include <string>
#include <utility>
#include <vector>

namespace {

const char* const COMPONENT_FIELDS[] = {"component_length", "component_expansion_coefficient"};

/// The order in which the file's input block holds them, and the decimals with which a file does.
const std::vector<std::pair<const char*, int>> INPUT_FIELDS = {
    {"machine_expansion_coefficient", 2}, {"machine_scale", 6}, {"temperature_minimum", 2}, {"temperature_maximum", 2},
    {"temperature_gradient", 2},          {"increment", 3},     {"end_position", 3},
};

const char* const FIELDS_OUTSIDE_THE_FILE[] = {"standard_deviation", "start_position"};

struct TNumber
{
    const char* name;
    QString text;
    double value;            ///< what the text counts as
    const char* uncertainty; ///< what an item of this expression and sensitivity contributes
};

void PrintTo(const TNumber& row, std::ostream* stream)
{
    *stream << row.name;
}

const TNumber NUMBERS[] = {
    {"Close_to_the_largest", "1e308", 1e308, "ERR"},
    {"Minus_zero", "-0", -0.0, "0.000000"},
    {"No_number", "nan", 0.0, "ERR"},
    {"Infinite", "inf", 0.0, "ERR"},
    {"Close_to_the_smallest", "1e-320", 1e-320, "ERR"},
    {"Ten_thousand_nines", QString(10000, '9'), 0.0, "ERR"},
    {"Ten_thousand_decimals", "1." + QString(9999, '3'), 4.0 / 3.0, "1.777778"},
};

/// As a file holds it.
double Rounded(double value, int decimals)
{
    return Fixed_Text(value, decimals).toDouble();
}

class TSequenceNumbers : public TSequenceFixture, public ::testing::WithParamInterface<TNumber>
{
protected:
    void Put(const char* field)
    {
        auto* edit = Find<QLineEdit>(field);
        Paste_Text(edit, GetParam().text);
        QTest::keyClick(edit, Qt::Key_Return);
    }

    void Put_Into_Every_Field()
    {
        Select_Entry("Resolution");
        Put("sensitivity");
        Put("expression");
        for (const char* field : COMPONENT_FIELDS) {
            Put(field);
        }
        Select_Identifier("SN 1");
        for (const char* field : COMPONENT_FIELDS) {
            Put(field);
        }
        Show_Page("Variables");
        for (const auto& field : INPUT_FIELDS) {
            Put(field.first);
        }
        for (const char* field : FIELDS_OUTSIDE_THE_FILE) {
            Put(field);
        }
    }

    /// What the file then holds.
    static TBudgetFile Expected()
    {
        const double value = GetParam().value;
        TBudgetFile budget = Linear_Workshop();
        budget.document.Update_Component_Item("Probe", "Resolution", QString(), GetParam().text, false);
        Change_Item(&budget.document, "Probe", "Resolution",
                    [value](TNorvexaData::TComponentItem* record) { record->sensitivity = Rounded(value, 6); });
        Change_Component(&budget.document, "Probe", [value](TNorvexaData::TComponent* record) {
            record->length = Rounded(value, 6);
            record->expansion_coefficient = Rounded(value, 2) / 1000.0;
        });
        Change_Identifier(&budget.document, "Probe", "SN 1", [value](TNorvexaData::TComponentInstance* record) {
            record->length = Rounded(value, 6);
            record->expansion_coefficient = Rounded(value, 2) / 1000.0;
        });
        TInputData* input = &budget.input_data;
        double* const inputs[] = {&input->machine_expansion_coefficient,
                                  &input->machine_scale,
                                  &input->temperature_minimum,
                                  &input->temperature_maximum,
                                  &input->temperature_gradient,
                                  &input->report_increment,
                                  &input->report_end};
        for (std::size_t index = 0; index < INPUT_FIELDS.size(); ++index) {
            *inputs[index] = Rounded(value, INPUT_FIELDS.at(index).second);
        }
        return budget;
    }
};

} // namespace

TEST_P(TSequenceNumbers, In_every_field_is_saved_as_what_it_counts_as)
{
    Open_Budget(Linear_Workshop());

    Put_Into_Every_Field();

    EXPECT_EQ(Check(), Model_Of(Expected()));
}

TEST_P(TSequenceNumbers, In_every_field_lets_the_report_be_shown_and_refuses_to_export_it)
{
    Open_Budget(Linear_Workshop());
    Put_Into_Every_Field();

    Show_Report("Length");

    EXPECT_EQ(Page(), "Report");
    EXPECT_EQ(Entry(Report_Rows(), "Resolution").siblingAtColumn(6).data().toString(), GetParam().uncertainty);
    if (GetParam().uncertainty == std::string("ERR")) {
        EXPECT_FALSE(Find<QPushButton>("export_csv")->isEnabled());
    } else {
        Click_Export_CSV();
        const QString position = Fixed_Text(GetParam().value, 6);
        EXPECT_EQ(Log(), QString("ERR:  Start and End position invalid.  %1  to  %1").arg(position));
        EXPECT_EQ(Page(), "Log");
    }
    EXPECT_EQ(Check(), Model_Of(Expected()));
}

INSTANTIATE_TEST_SUITE_P(Table, TSequenceNumbers, ::testing::ValuesIn(NUMBERS),
                         [](const auto& row) { return std::string(row.param.name); });
