#include "core/messagebox.h"
#include "core/optioneditor.h"
#include "src/calibrationdateedit.h"
#include "src/exportprogress.h"
#include "src/namedialog.h"
#include "src/titlelabel.h"
#include "tests/support/filledpages.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QListWidget>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QStyleOptionButton>
#include <QStyleOptionComboBox>
#include <QStyleOptionFrame>
#include <QTabBar>
#include <QTextDocument>
#include <QToolButton>
#include <QTreeWidget>

namespace {

/// A line for each text that needs more room than its widget gives it.
class TCutTexts
{
public:
    explicit TCutTexts(const QWidget* window)
    {
        for (QWidget* widget : window->findChildren<QWidget*>()) {
            if (widget->window() == window && widget->isVisible()) {
                Look_At(widget);
            }
        }
    }

    QStringList Lines() const { return d_lines; }
    int Count() const { return d_count; }

private:
    void Look_At(QWidget* widget)
    {
        if (auto* title = qobject_cast<TTitleLabel*>(widget)) {
            Look_At_Title(title);
        } else if (auto* label = qobject_cast<QLabel*>(widget)) {
            Look_At_Label(label);
        } else if (auto* tool_button = qobject_cast<QToolButton*>(widget)) {
            Require(tool_button, tool_button->toolTip(), tool_button->size(), tool_button->iconSize());
        } else if (auto* button = qobject_cast<QAbstractButton*>(widget)) {
            Look_At_Button(button);
        } else if (auto* combo = qobject_cast<QComboBox*>(widget)) {
            Look_At_Combo(combo);
        } else if (auto* edit = qobject_cast<QLineEdit*>(widget)) {
            Look_At_Edit(edit);
        } else if (auto* date = qobject_cast<QAbstractSpinBox*>(widget)) {
            Require(date, date->text(), date->size(), {date->sizeHint().width(), date->sizeHint().height()});
        } else if (auto* tabs = qobject_cast<QTabBar*>(widget)) {
            Look_At_Tabs(tabs);
        } else if (auto* bar = qobject_cast<QMenuBar*>(widget)) {
            Look_At_Menu_Bar(bar);
        } else if (auto* view = qobject_cast<QTreeWidget*>(widget)) {
            Look_At_Tree(view);
        } else if (auto* list = qobject_cast<QListWidget*>(widget)) {
            Look_At_List(list);
        }
    }

    void Look_At_Title(const TTitleLabel* title)
    {
        Require(title, title->text(), title->contentsRect().size(),
                {0, title->Shown_Lines().size() * title->fontMetrics().lineSpacing()});
        if (title->Shown_Lines().join(QString()).simplified() != title->text().simplified()) {
            d_lines << Name_Of(title) + ": elided";
        }
    }

    void Look_At_Label(const QLabel* label)
    {
        if (!label->pixmap(Qt::ReturnByValue).isNull() || label->text().isEmpty()) {
            return;
        }
        // Rich text is laid out in a document.
        if (const auto* document = label->findChild<QTextDocument*>()) {
            Require(label, document->toPlainText(), label->size(), document->size().toSize());
        } else {
            Require(label, label->text(), label->contentsRect().size(), Text_Size(label, label->text()));
        }
    }

    void Look_At_Button(const QAbstractButton* button)
    {
        QStyleOptionButton option;
        option.initFrom(button);
        option.text = button->text();
        QStyle::SubElement element = QStyle::SE_PushButtonContents;
        if (qobject_cast<const QCheckBox*>(button) != nullptr) {
            element = QStyle::SE_CheckBoxContents;
        } else if (qobject_cast<const QRadioButton*>(button) != nullptr) {
            element = QStyle::SE_RadioButtonContents;
        }
        Require(button, button->text(), button->style()->subElementRect(element, &option, button).size(),
                Text_Size(button, button->text()));
    }

    void Look_At_Combo(const QComboBox* combo)
    {
        QStyleOptionComboBox option;
        option.initFrom(combo);
        option.editable = combo->isEditable();
        const QRect field =
            combo->style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, combo);
        Require(combo, combo->currentText(), field.size(), Text_Size(combo, combo->currentText()));
        // That within a table is as high as its row.
        if (combo->hasFrame()) {
            Require(combo, combo->currentText(), combo->size(), {0, combo->sizeHint().height()});
        }
    }

    void Look_At_Edit(const QLineEdit* edit)
    {
        const int margin = 2; // that a line edit keeps on both sides within its frame
        QStyleOptionFrame option;
        option.initFrom(edit);
        option.lineWidth =
            edit->hasFrame() ? edit->style()->pixelMetric(QStyle::PM_DefaultFrameWidth, &option, edit) : 0;
        const QRect contents = edit->style()->subElementRect(QStyle::SE_LineEditContents, &option, edit);
        Require(edit, edit->text(), contents.size(), Text_Size(edit, edit->text()) + QSize(2 * margin, 0));
        // That within a date editor has its frame around it.
        if (qobject_cast<QAbstractSpinBox*>(edit->parentWidget()) == nullptr) {
            Require(edit, edit->text(), edit->size(), {0, edit->sizeHint().height()});
        }
    }

    void Look_At_Tabs(const QTabBar* tabs)
    {
        for (int index = 0; index < tabs->count(); ++index) {
            Require(tabs, tabs->tabText(index), tabs->tabRect(index).size(), Text_Size(tabs, tabs->tabText(index)));
        }
        Require(tabs, "all tabs", tabs->size(), {tabs->tabRect(tabs->count() - 1).right() + 1, 0});
    }

    void Look_At_Menu_Bar(const QMenuBar* bar)
    {
        for (QAction* action : bar->actions()) {
            Require(bar, action->text(), bar->actionGeometry(action).size(), Text_Size(bar, action->text()));
        }
    }

    void Look_At_Tree(const QTreeWidget* tree)
    {
        const QHeaderView* header = tree->header();
        for (int column = 0; column < header->count() && header->isVisible(); ++column) {
            const QString text = tree->headerItem()->text(column);
            Require(tree, text, {header->sectionSize(column), header->height()},
                    Text_Size(tree, text) + QSize(2 * header->style()->pixelMetric(QStyle::PM_HeaderMargin), 0));
        }
        Look_At_Rows(tree, {});
    }

    void Look_At_Rows(const QTreeWidget* tree, const QModelIndex& parent)
    {
        for (int row = 0; row < tree->model()->rowCount(parent); ++row) {
            for (int column = 0; column < tree->columnCount(); ++column) {
                const QModelIndex index = tree->model()->index(row, column, parent);
                Require(tree, index.data().toString(), tree->visualRect(index).size(), Entry_Size(tree, index));
            }
            Look_At_Rows(tree, tree->model()->index(row, 0, parent));
        }
    }

    // A list is scrolled to what is too wide for it.
    void Look_At_List(const QListWidget* list)
    {
        for (int row = 0; row < list->count(); ++row) {
            const QModelIndex index = list->model()->index(row, 0);
            Require(list, index.data().toString(), list->visualRect(index).size(),
                    {0, Entry_Size(list, index).height()});
        }
    }

    static QSize Text_Size(const QWidget* widget, const QString& text)
    {
        return widget->fontMetrics().size(Qt::TextShowMnemonic, text);
    }

    static QSize Entry_Size(const QAbstractItemView* view, const QModelIndex& index)
    {
        const QVariant font = index.data(Qt::FontRole);
        const QFontMetrics metrics(font.isValid() ? font.value<QFont>() : view->font());
        return metrics.size(Qt::TextSingleLine, index.data().toString());
    }

    void Require(const QWidget* widget, const QString& text, const QSize& room, const QSize& needed)
    {
        ++d_count;
        if (room.width() < needed.width() || room.height() < needed.height()) {
            d_lines << QString("%1: '%2' has %3 x %4 of %5 x %6")
                           .arg(Name_Of(widget), text)
                           .arg(room.width())
                           .arg(room.height())
                           .arg(needed.width())
                           .arg(needed.height());
        }
    }

    QStringList d_lines;
    int d_count = 0;
};

class TWholeTexts : public TFilledPagesFixture, public ::testing::WithParamInterface<const char*>
{
protected:
    void SetUp() override { Turn_To(GetParam()); }
};

TEST_P(TWholeTexts, Are_shown_at_the_windows_own_size)
{
    const TCutTexts cut(&d_editor);

    EXPECT_EQ(d_editor.size(), QSize(1101, 801));
    EXPECT_EQ(d_editor.devicePixelRatioF(), QByteArray(NORVEXA_SCALE_FACTOR).toDouble());
    EXPECT_GT(cut.Count(), 10);
    EXPECT_EQ(cut.Lines(), QStringList());
}

INSTANTIATE_TEST_SUITE_P(, TWholeTexts, ::testing::ValuesIn(PAGE_LABELS), Page_Test_Name);

TEST_F(TFilledPagesFixture, The_editor_of_a_choice_shows_it_whole)
{
    Turn_To("Report");
    auto* table = Find<TOptionEditorWidget>("report_table");
    table->editItem(table->topLevelItem(0), 1);

    ASSERT_NE(Open_Editor<QComboBox>(table), nullptr);
    EXPECT_EQ(TCutTexts(&d_editor).Lines(), QStringList());
}

TEST(TWholeTextsOfAFreshWindow, Are_shown_on_every_page)
{
    TNorvexaEditor window;
    Show_Active(&window);

    for (const char* label : PAGE_LABELS) {
        Select_Tab(Child<QTabWidget>(&window, "pages"), label);
        EXPECT_EQ(TCutTexts(&window).Lines(), QStringList()) << label;
    }
}

TEST(TWholeTextsOfDialogs, The_name_dialog_shows_its_texts_whole)
{
    TNameDialog dialog;
    dialog.Set_Name("Repeatability");
    dialog.show();

    EXPECT_EQ(TCutTexts(&dialog).Lines(), QStringList());
}

TEST(TWholeTextsOfDialogs, The_progress_of_an_export_shows_its_texts_whole)
{
    TExportProgress progress(121, nullptr, [] { return TExportProgress::PATIENCE_MS; });
    progress.Go_On(120);

    EXPECT_EQ(TCutTexts(&progress).Lines(), QStringList());
}

TEST(TWholeTextsOfDialogs, The_message_box_shows_its_texts_whole)
{
    TMessageBox box(nullptr);
    box.setText("Delete Selected Component Identifiers");
    box.setInformativeText("Are you sure you want to delete the selected component identifier items?");
    box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
    box.show();

    EXPECT_EQ(TCutTexts(&box).Lines(), QStringList());
}

} // namespace
