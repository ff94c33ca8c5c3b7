#include "src/reportwidget.h"

#include "tests/support/qtprinters.h"

#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

using TItem = TReportWidget::TReportItemData;

TItem Item(const QString& name, double value, const QString& expression_type = "Constant")
{
    TItem item;
    item.name = name;
    item.expression_type = expression_type;
    item.expression = "1";
    item.sensitivity = "1.000000";
    item.distribution = "Normal";
    item.uc_type = "Type B";
    item.value = value;
    return item;
}

TReportWidget::TReportData Record(const QString& name, const std::vector<TItem>& items)
{
    TReportWidget::TReportData record;
    record.name = name;
    record.items = items;
    return record;
}

TReportWidget::TReportData For_Variable(TReportWidget::TReportData record)
{
    record.is_variable = true;
    return record;
}

TReportWidget::TReportData Chosen(TReportWidget::TReportData record, const QString& identifier)
{
    record.identifier = identifier;
    return record;
}

TReportWidget::TExportData Alone(const QString& component, const TItem& item)
{
    TReportWidget::TExportData data;
    data.component = component;
    data.item = item;
    return data;
}

class TReportWidgetExport : public ::testing::Test
{
protected:
    /// Adds three items at each of two lengths, which bring them in different orders.
    void Add_Drift_Noise_Drift()
    {
        for (const TItem& item : {Item("Drift", 1.0), Item("Noise", 2.0), Item("Drift", 3.0)}) {
            d_page.Add_Export_Data(Record("Scale", {item}), 0.0);
        }
        for (const TItem& item : {Item("Noise", 20.0), Item("Drift", 10.0), Item("Drift", 30.0)}) {
            d_page.Add_Export_Data(Record("Scale", {item}), 50.0);
        }
    }

    /// The lines of the written file, without the empty ones.
    QStringList Written_Lines()
    {
        const QString path = d_folder.filePath("export.csv");
        d_page.Update_Export_Uncertainty_Data();
        d_page.Format_Export_Data();
        EXPECT_TRUE(d_page.Write_Export_CSV_Data(path));

        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return QString::fromLatin1(file.readAll()).split('\n', Qt::SkipEmptyParts);
    }

    /// The budget data without empty lines and without the formula.
    QStringList Data_Section()
    {
        const QStringList lines = Written_Lines();
        const int first = lines.indexOf("Budget Data") + 1;
        return lines.mid(first, lines.size() - first - FORMULA_LINES);
    }

    QString Combined() { return Data_Section().last(); }

    TReportWidget d_page;

private:
    static constexpr int FORMULA_LINES = 2;

    QTemporaryDir d_folder;
};

} // namespace

// Records

TEST_F(TReportWidgetExport, The_same_item_seen_at_every_length_grows_one_record)
{
    for (const double length : {0.0, 50.0, 100.0}) {
        d_page.Add_Export_Data(Record("Scale", {Item("Drift", 0.001 + length / 1000.0)}), length);
    }

    EXPECT_EQ(Data_Section(), QStringList({",,Position (mm),0.000,50.000,100.000", "Scale Component ",
                                           ",Source,Drift,0.001000000,0.051000000,0.101000000", "Uncertainty",
                                           ",,Combined,0.001000000,0.051000000,0.101000000"}));
}

TEST_F(TReportWidgetExport, Items_of_one_name_in_two_components_are_separate_records)
{
    for (const double length : {0.0, 50.0}) {
        d_page.Add_Export_Data(Record("Scale", {Item("Drift", 0.003)}), length);
        d_page.Add_Export_Data(Record("Probe", {Item("Drift", 0.004)}), length);
    }

    EXPECT_EQ(Data_Section(),
              QStringList({",,Position (mm),0.000,50.000", "Scale Component ", ",Source,Drift,0.003000000,0.003000000",
                           "Probe Component ", ",Source,Drift,0.004000000,0.004000000", "Uncertainty",
                           ",,Combined,0.005000000,0.005000000"}));
}

TEST_F(TReportWidgetExport, An_item_of_a_variable_and_of_the_group_are_separate_records)
{
    for (const double length : {0.0, 50.0}) {
        d_page.Add_Export_Data(For_Variable(Record("Scale", {Item("Drift", 0.003)})), length);
        d_page.Add_Export_Data(Record("Probe", {Item("Wear", 0.002)}), length);
        d_page.Add_Export_Data(Record("Scale", {Item("Drift", 0.004)}), length);
    }

    EXPECT_EQ(Data_Section().filter("Drift"),
              QStringList({",Source,Drift,0.003000000,0.003000000", ",Source,Drift,0.004000000,0.004000000"}));
    EXPECT_EQ(Data_Section().filter("Scale"), QStringList({"Scale Component  Variable", "Scale Component "}));
}

TEST_F(TReportWidgetExport, Names_are_compared_exactly)
{
    for (const double length : {0.0, 50.0}) {
        d_page.Add_Export_Data(Record("Scale", {Item("Drift", 0.001), Item("drift", 0.002), Item("Drift ", 0.003)}),
                               length);
    }

    EXPECT_EQ(Data_Section().mid(2, 3),
              QStringList({",Source,Drift,0.001000000,0.001000000", ",,drift,0.002000000,0.002000000",
                           ",,Drift ,0.003000000,0.003000000"}));
}

TEST_F(TReportWidgetExport, Records_find_their_items_in_whatever_order_a_length_brings_them)
{
    Add_Drift_Noise_Drift();

    EXPECT_EQ(Data_Section().mid(2, 3),
              QStringList({",Source,Drift,1.000000000,10.000000000", ",,Noise,2.000000000,20.000000000",
                           ",,Drift,3.000000000,30.000000000"}));
}

TEST_F(TReportWidgetExport, Records_of_one_item_name_find_their_items_in_whatever_order_a_length_brings_them)
{
    d_page.Add_Export_Data(For_Variable(Record("Scale", {Item("Drift", 1.0)})), 0.0);
    d_page.Add_Export_Data(Record("Scale", {Item("Drift", 2.0)}), 0.0);
    d_page.Add_Export_Data(Record("Probe", {Item("Drift", 3.0)}), 0.0);
    d_page.Add_Export_Data(For_Variable(Record("Probe", {Item("Drift", 4.0)})), 0.0);

    d_page.Add_Export_Data(For_Variable(Record("Probe", {Item("Drift", 40.0)})), 50.0);
    d_page.Add_Export_Data(Record("Probe", {Item("Drift", 30.0)}), 50.0);
    d_page.Add_Export_Data(Record("Scale", {Item("Drift", 20.0)}), 50.0);
    d_page.Add_Export_Data(For_Variable(Record("Scale", {Item("Drift", 10.0)})), 50.0);

    EXPECT_EQ(Data_Section().filter("Drift"),
              QStringList({",Source,Drift,1.000000000,10.000000000", ",,Drift,2.000000000,20.000000000",
                           ",Source,Drift,3.000000000,30.000000000", ",,Drift,4.000000000,40.000000000"}));
}

TEST_F(TReportWidgetExport, Items_of_one_name_keep_their_order_where_others_change_it)
{
    d_page.Add_Export_Data(Record("Scale", {Item("Noise", 1.0), Item("Drift", 2.0), Item("Drift", 3.0)}), 0.0);
    d_page.Add_Export_Data(Record("Scale", {Item("Drift", 20.0), Item("Drift", 30.0), Item("Noise", 10.0)}), 50.0);

    EXPECT_EQ(Data_Section().mid(2, 3),
              QStringList({",Source,Noise,1.000000000,10.000000000", ",,Drift,2.000000000,20.000000000",
                           ",,Drift,3.000000000,30.000000000"}));
}

TEST_F(TReportWidgetExport, An_item_of_the_group_alone_leaves_the_record_of_a_variable_as_it_is)
{
    d_page.Add_Export_Data(For_Variable(Record("Scale", {Item("Drift", 1.0)})), 0.0);
    d_page.Add_Export_Data(Record("Scale", {Item("Drift", 20.0)}), 50.0);

    EXPECT_EQ(Data_Section().filter("Drift"), QStringList({",Source,Drift,1.000000000", ",,Drift,20.000000000"}));
}

TEST_F(TReportWidgetExport, An_item_of_one_component_alone_leaves_the_record_of_another_as_it_is)
{
    d_page.Add_Export_Data(Record("Scale", {Item("Drift", 1.0)}), 0.0);
    d_page.Add_Export_Data(Record("Probe", {Item("Drift", 2.0)}), 0.0);
    d_page.Add_Export_Data(Record("Probe", {Item("Drift", 20.0)}), 50.0);

    EXPECT_EQ(Data_Section().filter("Drift"),
              QStringList({",Source,Drift,1.000000000", ",Source,Drift,2.000000000,20.000000000"}));
}

TEST_F(TReportWidgetExport, A_length_that_comes_again_starts_with_the_first_record)
{
    for (const double length : {0.0, 50.0, 0.0}) {
        d_page.Add_Export_Data(Record("Scale", {Item("Drift", 1.0 + length)}), length);
        d_page.Add_Export_Data(Record("Scale", {Item("Drift", 2.0 + length)}), length);
    }

    EXPECT_EQ(Data_Section().filter("Drift"), QStringList({",Source,Drift,1.000000000,51.000000000,1.000000000",
                                                           ",,Drift,2.000000000,52.000000000,2.000000000"}));
}

TEST_F(TReportWidgetExport, An_item_that_the_group_reports_twice_counts_twice)
{
    for (const double length : {0.0, 50.0}) {
        d_page.Add_Export_Data(Record("Scale", {Item("Drift", 0.003), Item("Drift", 0.004)}), length);
    }

    EXPECT_EQ(Data_Section(),
              QStringList({",,Position (mm),0.000,50.000", "Scale Component ", ",Source,Drift,0.003000000,0.003000000",
                           ",,Drift,0.004000000,0.004000000", "Uncertainty", ",,Combined,0.005000000,0.005000000"}));
}

TEST_F(TReportWidgetExport, A_record_keeps_identifier_and_texts_of_its_first_length)
{
    d_page.Add_Export_Data(Chosen(Record("Scale", {Item("Drift", 0.001)}), "SN 1"), 0.0);
    TItem other = Item("Drift", 0.002, "Length Dependent");
    other.expression = "2";
    d_page.Add_Export_Data(Chosen(Record("Scale", {other}), "SN 2"), 50.0);

    const QStringList lines = Written_Lines();

    EXPECT_EQ(lines.mid(1, 3),
              QStringList({"Scale Component SN 1", ",Source,Value,Expression,Type,Sensitivity,Distribution,Divisor",
                           R"(,Drift,Constant,"1",Type B,1.000000,Normal,1.000000)"}));
    EXPECT_EQ(Data_Section().at(2), ",Source,Drift,0.001000000,0.002000000");
}

TEST_F(TReportWidgetExport, A_record_added_as_a_whole_keeps_its_values)
{
    TReportWidget::TExportData record;
    record.component = "Scale";
    record.item = Item("Drift", 0.003);
    record.values = {0.001, 0.002};
    record.positions = {0.0, 50.0};

    d_page.Add_Export_Data(record, 100.0);

    EXPECT_EQ(Data_Section().mid(0, 3), QStringList({",,Position (mm),0.000,50.000,100.000", "Scale Component ",
                                                     ",Source,Drift,0.001000000,0.002000000,0.003000000"}));
}

TEST_F(TReportWidgetExport, An_item_added_alone_grows_the_record_of_one_added_with_its_component)
{
    d_page.Add_Export_Data(Record("Scale", {Item("Drift", 1.0)}), 0.0);
    d_page.Add_Export_Data(Alone("Scale", Item("Drift", 10.0)), 50.0);

    EXPECT_EQ(Data_Section().filter("Drift"), QStringList(",Source,Drift,1.000000000,10.000000000"));
}

TEST_F(TReportWidgetExport, A_record_without_items_adds_nothing)
{
    d_page.Add_Export_Data(Record("Scale", {}), 0.0);

    EXPECT_EQ(Data_Section(), QStringList({",,Position (mm)", "Uncertainty", ",,Combined"}));
}

// Variables

TEST_F(TReportWidgetExport, Variables_grow_by_source_and_name)
{
    for (const double value : {1.0, 2.0}) {
        d_page.Add_Export_Data(Record("Scale", {Item("Drift", 0.0)}), value);
        d_page.Add_Export_Data(Record("Probe", {Item("Drift", 0.0)}), value);
        d_page.Add_Export_Variable_Data({"", "Td", {value}});
        d_page.Add_Export_Variable_Data({"Scale", "Td", {10.0 * value}});
        d_page.Add_Export_Variable_Data({"Probe", "Td", {100.0 * value}});
        d_page.Add_Export_Variable_Data({"Scale", "td", {1000.0 * value}});
    }

    EXPECT_EQ(Written_Lines().filter(QRegularExpression("^,[Tt]d,")),
              QStringList({",Td,1.000000", ",Td,10.000000", ",Td,100.000000", ",td,1000.000000"}));
    EXPECT_EQ(Data_Section().filter(QRegularExpression(",[Tt]d,")),
              QStringList({",Local Variables,Td,10.000000000,20.000000000", ",,td,1000.000000000,2000.000000000",
                           ",Local Variables,Td,100.000000000,200.000000000"}));
}

TEST_F(TReportWidgetExport, A_variable_takes_several_values_at_once)
{
    d_page.Add_Export_Data(Record("Scale", {Item("Drift", 0.0)}), 0.0);
    d_page.Add_Export_Variable_Data({"Scale", "Td", {1.0, 2.0}});
    d_page.Add_Export_Variable_Data({"Scale", "Td", {3.0, 4.0}});

    EXPECT_EQ(Data_Section().at(2), ",Local Variables,Td,1.000000000,2.000000000,3.000000000,4.000000000");
}

TEST_F(TReportWidgetExport, Two_empty_sources_are_the_same)
{
    d_page.Add_Export_Data(Record("", {Item("Drift", 0.0)}), 0.0);
    d_page.Add_Export_Variable_Data({QString(), "Td", {1.0}});
    d_page.Add_Export_Variable_Data({QString(""), "Td", {2.0}});

    EXPECT_EQ(Written_Lines().filter(",Td,"),
              QStringList({",Td,1.000000", ",Local Variables,Td,1.000000000,2.000000000"}));
}

// Combined uncertainty

TEST_F(TReportWidgetExport, The_uncertainty_combines_constant_and_length_dependent_items_of_the_group)
{
    for (const double length : {0.0, 1000.0}) {
        d_page.Add_Export_Data(For_Variable(Record("Beam", {Item("Heat", 7.0)})), length);
        d_page.Add_Export_Data(
            Record("Scale", {Item("Drift", 0.003), Item("Wear", 0.004 * length, "Length Dependent")}), length);
    }

    EXPECT_EQ(Combined(), ",,Combined,0.003000000,4.000001125");
}

TEST_F(TReportWidgetExport, Without_group_items_the_uncertainty_is_0)
{
    d_page.Add_Export_Data(For_Variable(Record("Beam", {Item("Heat", 7.0)})), 0.0);

    EXPECT_EQ(Combined(), ",,Combined,0.000000000");
}

TEST_F(TReportWidgetExport, A_record_that_misses_lengths_counts_nothing_there)
{
    d_page.Add_Export_Data(Record("Scale", {Item("Drift", 0.003)}), 0.0);
    d_page.Add_Export_Data(Record("Probe", {Item("Drift", 0.004)}), 0.0);
    d_page.Add_Export_Data(Record("Scale", {Item("Drift", 0.003)}), 50.0);

    EXPECT_EQ(Combined(), ",,Combined,0.005000000,0.003000000");
}

TEST_F(TReportWidgetExport, The_uncertainty_is_calculated_anew_each_time)
{
    d_page.Add_Export_Data(Record("Scale", {Item("Drift", 0.003)}), 0.0);
    d_page.Update_Export_Uncertainty_Data();

    EXPECT_EQ(Combined(), ",,Combined,0.003000000");
}

// Clearing

TEST_F(TReportWidgetExport, Clearing_forgets_everything)
{
    const QStringList empty = Written_Lines();
    d_page.Add_Export_Data(Record("Scale", {Item("Drift", 0.003)}), 0.0);
    d_page.Add_Export_Variable_Data({"", "Td", {1.0}});
    ASSERT_NE(Written_Lines(), empty);

    d_page.Clear_Export();

    EXPECT_EQ(Written_Lines(), empty);
}

TEST_F(TReportWidgetExport, After_clearing_records_grow_from_nothing)
{
    d_page.Add_Export_Data(Record("Scale", {Item("Drift", 0.003)}), 0.0);
    d_page.Add_Export_Variable_Data({"Scale", "Td", {1.0}});
    d_page.Clear_Export();

    d_page.Add_Export_Data(Record("Scale", {Item("Drift", 0.004)}), 50.0);
    d_page.Add_Export_Variable_Data({"Scale", "Td", {2.0}});

    EXPECT_EQ(Data_Section(),
              QStringList({",,Position (mm),50.000", "Scale Component ", ",Local Variables,Td,2.000000000",
                           ",Source,Drift,0.004000000", "Uncertainty", ",,Combined,0.004000000"}));
}

TEST_F(TReportWidgetExport, After_clearing_records_find_their_own_items)
{
    d_page.Add_Export_Data(Record("Scale", {Item("Noise", 7.0), Item("Wear", 8.0), Item("Drift", 9.0)}), 0.0);
    d_page.Clear_Export();

    Add_Drift_Noise_Drift();

    EXPECT_EQ(Data_Section().mid(2, 3),
              QStringList({",Source,Drift,1.000000000,10.000000000", ",,Noise,2.000000000,20.000000000",
                           ",,Drift,3.000000000,30.000000000"}));
}

TEST_F(TReportWidgetExport, Clearing_takes_the_formatted_lines_away)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("export.csv");
    d_page.Add_Export_Data(Record("Scale", {Item("Drift", 0.003)}), 0.0);
    d_page.Format_Export_Data();

    d_page.Clear_Export();

    ASSERT_TRUE(d_page.Write_Export_CSV_Data(path));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), "Budget Definition - <no selection>\n\nGlobal Variables\n\nBudget Data\n\n\n");
}

// Load

TEST_F(TReportWidgetExport, Takes_a_thousand_items_at_120_lengths)
{
    constexpr int ITEMS = 1000;
    constexpr int LENGTHS = 120;
    std::vector<TItem> items;
    items.reserve(ITEMS);
    for (int index = 0; index < ITEMS; ++index) {
        items.push_back(Item(QString::number(index), 0.001));
    }

    for (int length = 0; length < LENGTHS; ++length) {
        d_page.Add_Export_Data(Record("Scale", items), length);
    }

    const QStringList lines = Data_Section();
    ASSERT_EQ(lines.size(), ITEMS + 4);
    EXPECT_EQ(lines.at(2 + ITEMS - 1).count(','), 2 + LENGTHS);
    EXPECT_EQ(lines.last(), ",,Combined" + QString(",0.031622777").repeated(LENGTHS)); // 0.001 times the root of 1000
}
