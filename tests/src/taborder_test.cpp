#include "tests/support/filledpages.h"

#include <QApplication>
#include <QTabBar>

#include <algorithm>

namespace {

struct TPageOrder
{
    const char* page;
    QStringList names;
};

// The pages' tab bar, then down the page, the left column before the right one. Of a pair of radio buttons the checked
// one alone is stopped at; the arrow keys go on to the other.
const TPageOrder PAGE_ORDERS[] = {
    {"Budget Components",
     {"qt_tabwidget_tabbar",
      "budget_tree",
      "add_budget_item",
      "remove_budget_item",
      "identifier_list",
      "add_identifier",
      "remove_identifier",
      "calibration_date",
      "calibration_due_date",
      "component_length",
      "component_expansion_coefficient",
      "mode_single",
      "mode_export_equipment",
      "mode_limit_length",
      "uc_type",
      "distribution",
      "sensitivity",
      "expression",
      "use_default_expression",
      "length_independent",
      "linear"}},
    {"Variables",
     {"qt_tabwidget_tabbar", "machine_expansion_coefficient", "machine_scale", "temperature_minimum",
      "temperature_maximum", "temperature_gradient", "standard_deviation", "start_position", "end_position",
      "increment", "variable_list", "add_variable", "rename_variable", "remove_variable"}},
    {"Report Groups", {"qt_tabwidget_tabbar", "group_list", "add_group", "remove_group", "component_list"}},
    {"Report", {"qt_tabwidget_tabbar", "report_group", "report_table", "export_pdf", "export_csv"}},
    {"Log", {"qt_tabwidget_tabbar", "log"}},
};

class TTabOrder : public TFilledPagesFixture, public ::testing::WithParamInterface<TPageOrder>
{
protected:
    void SetUp() override
    {
        Turn_To(GetParam().page);
        Tab_Bar()->setFocus();
    }

    QTabBar* Tab_Bar() const { return Find<QTabWidget>("pages")->tabBar(); }

    // The widgets that have the focus until it is back where it was. A date editor is stopped at once for each part of
    // its date, and counts once.
    QStringList Walk(Qt::Key key, Qt::KeyboardModifiers modifiers)
    {
        QStringList names(Name_Of(Tab_Bar()));
        const int most_steps = 100;

        for (int step = 0; step < most_steps; ++step) {
            Press(key, modifiers);
            if (QApplication::focusWidget() == Tab_Bar()) {
                return names;
            }
            const QString name = Name_Of(QApplication::focusWidget());
            if (name != names.last()) {
                names << name;
            }
        }
        ADD_FAILURE() << "The focus does not come back";
        return names;
    }
};

TEST_P(TTabOrder, Tab_goes_down_the_page)
{
    EXPECT_EQ(Walk(Qt::Key_Tab, Qt::NoModifier), GetParam().names);
}

TEST_P(TTabOrder, Shift_and_Tab_go_up_the_page)
{
    QStringList names = GetParam().names;
    std::reverse(names.begin() + 1, names.end());

    EXPECT_EQ(Walk(Qt::Key_Backtab, Qt::ShiftModifier), names);
}

TEST_P(TTabOrder, No_control_is_left_out)
{
    QStringList names;
    for (const QWidget* widget : Focusable_Widgets(&d_editor)) {
        if ((widget->focusPolicy() & Qt::TabFocus) != 0) {
            names << Name_Of(widget);
        }
    }
    names.sort();
    QStringList walked = GetParam().names;
    walked.sort();

    EXPECT_EQ(walked, names);
}

INSTANTIATE_TEST_SUITE_P(Pages, TTabOrder, ::testing::ValuesIn(PAGE_ORDERS),
                         [](const auto& row) { return QString(row.param.page).remove(' ').toStdString(); });

} // namespace
