#include "core/messagebox.h"
#include "src/exportprogress.h"
#include "src/namedialog.h"
#include "tests/support/filledpages.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCalendarWidget>
#include <QComboBox>
#include <QDateEdit>
#include <QHeaderView>
#include <QImage>
#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabBar>
#include <QTest>
#include <QTextDocument>
#include <QToolButton>
#include <QToolTip>
#include <QTreeWidget>

#include <algorithm>
#include <cmath>

namespace {

const double ENABLED_CONTRAST = 4.5;
const double DISABLED_CONTRAST = 3.0;

double Linear(double channel)
{
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double Luminance(const QColor& colour)
{
    return 0.2126 * Linear(colour.redF()) + 0.7152 * Linear(colour.greenF()) + 0.0722 * Linear(colour.blueF());
}

double Contrast(const QColor& first, const QColor& second)
{
    const double one = Luminance(first) + 0.05;
    const double other = Luminance(second) + 0.05;
    return std::max(one, other) / std::min(one, other);
}

// The colour of most pixels.
QColor Ground(const QImage& picture)
{
    QHash<QRgb, int> counts;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            ++counts[picture.pixel(x, y)];
        }
    }
    QRgb ground = 0;
    for (auto count = counts.cbegin(); count != counts.cend(); ++count) {
        if (count.value() > counts.value(ground)) {
            ground = count.key();
        }
    }
    return QColor(ground);
}

/// A line for each text of a window that is hard to tell from its ground. The ground is looked for on the picture of
/// the window, since styles blend it as they like; the text's colour is that of the palette, since letters are blended
/// with the ground.
class TPaleTexts
{
public:
    explicit TPaleTexts(QWidget* window) : d_window(window), d_picture(window->grab().toImage())
    {
        for (QWidget* widget : window->findChildren<QWidget*>()) {
            if (widget->window() == window && widget->isVisible()) {
                Look_At(widget);
            }
        }
    }

    QStringList Lines() const { return d_lines; }
    QStringList Seen() const { return d_seen; }

private:
    void Look_At(const QWidget* widget)
    {
        if (const auto* label = qobject_cast<const QLabel*>(widget)) {
            Look_At_Label(label);
        } else if (qobject_cast<const QToolButton*>(widget) != nullptr) {
            return; // an icon
        } else if (const auto* button = qobject_cast<const QAbstractButton*>(widget)) {
            const bool is_push_button = qobject_cast<const QPushButton*>(button) != nullptr;
            Require(button, button->text(), button->rect(),
                    Colour(button, is_push_button ? QPalette::ButtonText : QPalette::WindowText));
        } else if (const auto* combo = qobject_cast<const QComboBox*>(widget)) {
            Require(combo, combo->currentText(), combo->rect(), Colour(combo, QPalette::ButtonText));
        } else if (const auto* edit = qobject_cast<const QLineEdit*>(widget)) {
            Require(edit, edit->text(), edit->rect(), Colour(edit, QPalette::Text));
        } else if (const auto* log = qobject_cast<const QPlainTextEdit*>(widget)) {
            Require(log, log->toPlainText(), log->rect(), Colour(log, QPalette::Text));
        } else if (const auto* tabs = qobject_cast<const QTabBar*>(widget)) {
            Look_At_Tabs(tabs);
        } else if (const auto* bar = qobject_cast<const QMenuBar*>(widget)) {
            Require(bar, "menus", bar->rect(), Colour(bar, QPalette::WindowText));
        } else if (const auto* header = qobject_cast<const QHeaderView*>(widget)) {
            Require(header, "header", header->rect(), Colour(header, QPalette::ButtonText));
        } else if (const auto* view = qobject_cast<const QAbstractItemView*>(widget)) {
            Look_At_Entries(view, view->rootIndex());
        }
    }

    // Rich text, as a message box has it, brings its own colours.
    void Look_At_Label(const QLabel* label)
    {
        QColor colour = Colour(label, label->foregroundRole());
        if (label->textFormat() == Qt::RichText) {
            const int position = label->text().indexOf("color:#");
            colour = position < 0 ? colour : QColor(label->text().mid(position + 6, 7));
        }
        Require(label, label->text(), label->rect(), colour);
    }

    void Look_At_Tabs(const QTabBar* tabs)
    {
        for (int index = 0; index < tabs->count(); ++index) {
            Require(tabs, tabs->tabText(index), tabs->tabRect(index), Colour(tabs, QPalette::WindowText));
        }
    }

    void Look_At_Entries(const QAbstractItemView* view, const QModelIndex& parent)
    {
        for (int row = 0; row < view->model()->rowCount(parent); ++row) {
            for (int column = 0; column < view->model()->columnCount(parent); ++column) {
                Look_At_Entry(view, view->model()->index(row, column, parent));
            }
            Look_At_Entries(view, view->model()->index(row, 0, parent));
        }
    }

    void Look_At_Entry(const QAbstractItemView* view, const QModelIndex& index)
    {
        const QRect place = view->visualRect(index);
        const QVariant own_colour = index.data(Qt::ForegroundRole);
        QColor colour = Colour(view, QPalette::Text);

        if (view->selectionModel()->isSelected(index)) {
            colour = Colour(view, QPalette::HighlightedText);
        } else if (own_colour.isValid()) {
            colour = own_colour.value<QBrush>().color();
        }
        const QPoint offset = view->viewport()->mapTo(view, QPoint());
        Require(view, index.data().toString(), view->viewport()->rect().intersected(place).translated(offset), colour);
    }

    static QColor Colour(const QWidget* widget, QPalette::ColorRole role)
    {
        return widget->palette().color(widget->isEnabled() ? QPalette::Active : QPalette::Disabled, role);
    }

    void Require(const QWidget* widget, const QString& text, const QRect& place, const QColor& colour)
    {
        if (text.isEmpty() || place.isEmpty()) {
            return;
        }
        const QRect rect = place.adjusted(2, 2, -2, -2);
        const QColor ground = Ground(d_picture.copy(QRect(widget->mapTo(d_window, rect.topLeft()), rect.size())));
        const double least = widget->isEnabled() ? ENABLED_CONTRAST : DISABLED_CONTRAST;
        const double contrast = Contrast(colour, ground);

        d_seen << Name_Of(widget);
        if (contrast < least) {
            d_lines << QString("%1 '%2': %3 on %4 is %5")
                           .arg(Name_Of(widget), text.left(40), colour.name(), ground.name())
                           .arg(contrast, 0, 'f', 2);
        }
    }

    QWidget* d_window;
    QImage d_picture;
    QStringList d_lines;
    QStringList d_seen;
};

// Which colours the program starts with, and which come while it runs.
enum TTheme
{
    LIGHT,
    DARK,
    LIGHT_THEN_DARK,
    DARK_THEN_LIGHT
};

const TTheme THEMES[] = {LIGHT, DARK, LIGHT_THEN_DARK, DARK_THEN_LIGHT};
const char* const THEME_NAMES[] = {"Light", "Dark", "LightThenDark", "DarkThenLight"};

void Set_Dark(bool is_dark)
{
    QPalette palette;

    if (is_dark) {
        palette = Dark_Palette();
        QApplication::style()->polish(palette); // as it is done with the colours of a theme
    }
    QApplication::setPalette(is_dark ? palette : QPalette());
}

// Made before the window is.
struct TFirstTheme
{
    explicit TFirstTheme(TTheme theme) { Set_Dark(theme == DARK || theme == DARK_THEN_LIGHT); }
    ~TFirstTheme() { QApplication::setPalette(QPalette()); }
};

class TThemedTest : public ::testing::WithParamInterface<TTheme>
{
protected:
    void Change_Theme() const
    {
        if (GetParam() == LIGHT_THEN_DARK || GetParam() == DARK_THEN_LIGHT) {
            Set_Dark(GetParam() == LIGHT_THEN_DARK);
            QCoreApplication::processEvents();
        }
    }

private:
    TFirstTheme d_first_theme{GetParam()};
};

class TReadableTexts : public TThemedTest, public TFilledPagesFixture
{
protected:
    // Turns to each page in turn and looks at it.
    QStringList Pale_Texts()
    {
        QStringList lines;
        for (const char* page : PAGE_LABELS) {
            Turn_To(page);
            lines << TPaleTexts(&d_editor).Lines();
        }
        return lines;
    }
};

TEST_P(TReadableTexts, Are_on_every_page)
{
    Change_Theme();

    EXPECT_EQ(Pale_Texts(), QStringList());
    Turn_To("Budget Components");
    const QStringList seen = TPaleTexts(&d_editor).Seen();
    for (const char* name : {"component_title", "component_length", "mode_single", "uc_type", "budget_tree"}) {
        EXPECT_TRUE(seen.contains(name)) << name;
    }
}

TEST_P(TReadableTexts, Are_on_pages_that_are_disabled)
{
    Select_Entry("Norvexa Data");
    Change_Theme();

    EXPECT_FALSE(Find<QLineEdit>("component_length")->isEnabled());
    EXPECT_EQ(Pale_Texts(), QStringList());
}

TEST_P(TReadableTexts, Are_in_a_field_that_holds_no_number)
{
    Replace_Text(Find<QLineEdit>("component_length"), "1,5");
    Change_Theme();
    EXPECT_EQ(TPaleTexts(&d_editor).Lines(), QStringList());

    Replace_Text(Find<QLineEdit>("component_length"), "1.5");
    EXPECT_EQ(TPaleTexts(&d_editor).Lines(), QStringList());
}

TEST_P(TReadableTexts, Are_in_a_field_whose_expression_has_no_value)
{
    Replace_Text(Find<QLineEdit>("expression"), "1+");
    Change_Theme();

    EXPECT_EQ(TPaleTexts(&d_editor).Lines(), QStringList());
}

TEST_P(TReadableTexts, Are_in_the_calendar_of_a_date)
{
    Change_Theme();
    const QCalendarWidget* calendar = Open_Calendar(Find<QDateEdit>("calibration_date"));

    for (const Qt::DayOfWeek day : {Qt::Monday, Qt::Saturday, Qt::Sunday}) {
        const QBrush text = calendar->weekdayTextFormat(day).foreground();
        const QColor colour = text.style() == Qt::NoBrush ? calendar->palette().color(QPalette::Text) : text.color();
        EXPECT_GE(Contrast(colour, calendar->palette().color(QPalette::Base)), ENABLED_CONTRAST) << day;
    }
}

TEST_P(TReadableTexts, Are_in_tool_tips)
{
    Change_Theme();
    const QPalette tip = QToolTip::palette();

    for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive}) {
        EXPECT_GE(Contrast(tip.color(group, QPalette::ToolTipText), tip.color(group, QPalette::ToolTipBase)),
                  ENABLED_CONTRAST);
    }
}

TEST_P(TReadableTexts, Are_in_the_menus)
{
    Change_Theme();

    for (const QAction* title : d_editor.menuBar()->actions()) {
        QMenu* menu = title->menu();
        menu->ensurePolished();
        const QColor ground = Ground(menu->grab().toImage());
        EXPECT_GE(Contrast(menu->palette().color(QPalette::Text), ground), ENABLED_CONTRAST);
        EXPECT_GE(Contrast(menu->palette().color(QPalette::Disabled, QPalette::Text), ground), DISABLED_CONTRAST);
    }
}

// The red of a row that has no value is given; on white it is 4.0:1.
TEST_P(TReadableTexts, Are_told_from_the_ground_in_a_row_without_a_value)
{
    Select_Entry("CMM");
    Select_Entry("Length error");
    Replace_Text(Find<QLineEdit>("expression"), "1+");
    Press(Qt::Key_Return);
    Turn_To("Report");
    EXPECT_EQ(Find<QLabel>("report_status")->text(), "Uc at length 1000.000 mm: ERR");
    Change_Theme();

    for (const QString& line : TPaleTexts(&d_editor).Lines()) {
        EXPECT_TRUE(line.contains("#ff0000")) << line.toStdString();
        EXPECT_GE(line.section(' ', -1).toDouble(), DISABLED_CONTRAST) << line.toStdString();
    }
}

INSTANTIATE_TEST_SUITE_P(, TReadableTexts, ::testing::ValuesIn(THEMES),
                         [](const auto& row) { return THEME_NAMES[row.param]; });

class TReadableDialogs : public TThemedTest, public ::testing::Test
{};

TEST_P(TReadableDialogs, Have_a_name_dialog_that_can_be_read)
{
    TNameDialog dialog;
    dialog.Set_Name("Probe");
    dialog.show();
    Change_Theme();
    EXPECT_EQ(TPaleTexts(&dialog).Lines(), QStringList());

    dialog.Set_Name("");
    EXPECT_EQ(TPaleTexts(&dialog).Lines(), QStringList());
}

TEST_P(TReadableDialogs, Have_a_progress_of_an_export_that_can_be_read)
{
    TExportProgress progress(120, nullptr, [] { return TExportProgress::PATIENCE_MS; });
    progress.Go_On(60);
    Change_Theme();
    const TPaleTexts pale(&progress);

    EXPECT_EQ(pale.Lines(), QStringList());
    EXPECT_GE(pale.Seen().size(), 2);
}

TEST_P(TReadableDialogs, Have_a_message_box_that_can_be_read)
{
    TMessageBox box(nullptr);
    box.setText("Data Not Saved");
    box.setInformativeText("Current data will be lost.  Do you want to continue?");
    box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
    box.show();
    Change_Theme();
    const TPaleTexts pale(&box);

    EXPECT_EQ(pale.Lines(), QStringList());
    EXPECT_GE(pale.Seen().size(), 4);
}

INSTANTIATE_TEST_SUITE_P(, TReadableDialogs, ::testing::ValuesIn(THEMES),
                         [](const auto& row) { return THEME_NAMES[row.param]; });

} // namespace
