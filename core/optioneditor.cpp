#include "core/optioneditor.h"

#include "core/assertion.h"
#include "core/optiondelegate.h"

#include <QDateTime>
#include <QDir>
#include <QFileDialog>

#include <array>

namespace {

const int NAME_COLUMN = 0;
const int VALUE_COLUMN = 1;
const int FIRST_CALLER_COLUMN = 2;

using TCallerTexts = std::array<QString, 5>;

// The item is complete before it goes into the list: the caller's columns lie beyond those of the model.
QTreeWidgetItem* Create_Option(const QString& name, const QVariant& kind, const QString& value)
{
    auto* item = new QTreeWidgetItem;

    item->setFlags(Qt::ItemIsSelectable | Qt::ItemIsEditable | Qt::ItemIsEnabled);
    item->setText(NAME_COLUMN, name);
    item->setText(VALUE_COLUMN, value);
    item->setData(VALUE_COLUMN, Qt::UserRole, kind);
    return item;
}

QTreeWidgetItem* With_Texts(QTreeWidgetItem* item, const TCallerTexts& texts)
{
    int column = FIRST_CALLER_COLUMN;
    for (const QString& text : texts) {
        item->setText(column, text);
        ++column;
    }
    return item;
}

bool Is_Check_Option(const QTreeWidgetItem* item)
{
    const QVariant kind = item->data(VALUE_COLUMN, Qt::UserRole);

    return kind.type() == QVariant::Int && kind.toInt() == CHECK_OPTION;
}

QString With_Separator(const QString& directory)
{
    return directory.endsWith('/') ? directory : directory + '/';
}

} // namespace

TOptionEditorWidget::TOptionEditorWidget(const QWidget* parent)
    : QTreeWidget(const_cast<QWidget*>(parent)), d_delegate(std::make_unique<TOptionItemDelegate>(this))
{
    setItemDelegate(d_delegate.get());
    setLayoutDirection(Qt::LeftToRight);
    setEditTriggers(QAbstractItemView::AllEditTriggers);
    setAlternatingRowColors(true);
    setTextElideMode(Qt::ElideRight);
    setRootIsDecorated(false);
    setItemsExpandable(false);
    setAnimated(false);
    setColumnCount(2);
    clear();
    connect(d_delegate.get(), &TOptionItemDelegate::List_Item_Changed, this, &TOptionEditorWidget::Edit_List_Changed);
}

TOptionEditorWidget::~TOptionEditorWidget() = default;

int TOptionEditorWidget::AddLineEditorOption(const QString& name, const QString& value, const QString& text_2,
                                             const QString& text_3, const QString& text_4, const QString& text_5,
                                             const QString& text_6)
{
    return Append_Option(With_Texts(Create_Option(name, TEXT_OPTION, value), {text_2, text_3, text_4, text_5, text_6}));
}

int TOptionEditorWidget::AddLineEditorOption(const QString& name, int value, const QString& text_2,
                                             const QString& text_3, const QString& text_4, const QString& text_5,
                                             const QString& text_6)
{
    return AddLineEditorOption(name, QString::number(value), text_2, text_3, text_4, text_5, text_6);
}

int TOptionEditorWidget::AddPathEditorOption(const QString& name, const QString& path)
{
    return Append_Option(Create_Option(name, PATH_OPTION, path));
}

int TOptionEditorWidget::AddCheckOption(const QString& name, bool checked, const QString& text_2, const QString& text_3,
                                        const QString& text_4, const QString& text_5, const QString& text_6)
{
    QTreeWidgetItem* item = Create_Option(name, CHECK_OPTION, QString());

    item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
    item->setCheckState(VALUE_COLUMN, checked ? Qt::Checked : Qt::Unchecked);
    return Append_Option(With_Texts(item, {text_2, text_3, text_4, text_5, text_6}));
}

int TOptionEditorWidget::AddDateTimeEditorOption(const QString& name, const QDateTime& value)
{
    return Append_Option(Create_Option(name, DATE_TIME_OPTION, Option_Date_Time_Text(value)));
}

int TOptionEditorWidget::AddSelectionList(const QString& name, const QStringList& items, int default_index,
                                          const QString& text_2, const QString& text_3, const QString& text_4,
                                          const QString& text_5, const QString& text_6)
{
    NORVEXA_ASSERT_TEXT(default_index < items.size(), "DefaultIndex < Items.size()");

    return Append_Option(
        With_Texts(Create_Option(name, items, items.value(default_index)), {text_2, text_3, text_4, text_5, text_6}));
}

QString TOptionEditorWidget::OptionName(int index) const
{
    const QTreeWidgetItem* item = topLevelItem(index);

    return item != nullptr ? item->text(NAME_COLUMN) : QString();
}

QString TOptionEditorWidget::OptionResult(int index) const
{
    const QTreeWidgetItem* item = topLevelItem(index);

    if (item == nullptr) {
        return {};
    }
    if (Is_Check_Option(item)) {
        return item->checkState(VALUE_COLUMN) == Qt::Checked ? "Yes" : "No";
    }
    return item->text(VALUE_COLUMN);
}

bool TOptionEditorWidget::ChangeOptionText(int index, const QString& text)
{
    QTreeWidgetItem* item = topLevelItem(index);

    if (item == nullptr) {
        return false;
    }
    item->setText(VALUE_COLUMN, text);
    return true;
}

bool TOptionEditorWidget::ChangeOptionText(int index, int value)
{
    return ChangeOptionText(index, QString::number(value));
}

void TOptionEditorWidget::ChangeSelectionListOption(int index, int item)
{
    const QTreeWidgetItem* option = topLevelItem(index);
    const QStringList choices =
        option != nullptr ? option->data(VALUE_COLUMN, Qt::UserRole).toStringList() : QStringList();

    if (item >= 0 && item < choices.size()) {
        ChangeOptionText(index, choices.at(item));
    }
}

void TOptionEditorWidget::Edit_List_Changed(int index, const QString& text)
{
    ChangeOptionText(index, text);
    emit SelectionListItemChanged(index, text);
}

void TOptionEditorWidget::Path_Edit_Browse(const QString& path, int row, int column)
{
    const QString directory = QFileDialog::getExistingDirectory(
        this, tr("Select a directory path"), path,
        QFileDialog::ShowDirsOnly | QFileDialog::DontResolveSymlinks | QFileDialog::DontUseNativeDialog);
    QTreeWidgetItem* item = topLevelItem(row);

    if (!directory.isEmpty() && item != nullptr) {
        item->setText(column, QDir::toNativeSeparators(With_Separator(directory)));
    }
}

QModelIndex TOptionEditorWidget::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers)
{
    const QModelIndex current = currentIndex();
    const int step = action == MoveRight ? 1 : action == MoveLeft ? -1 : 0;
    const QModelIndex neighbour = current.siblingAtColumn(current.column() + step);

    if (step != 0 && neighbour.isValid()) {
        return neighbour;
    }
    return QTreeWidget::moveCursor(action, modifiers);
}

int TOptionEditorWidget::Append_Option(QTreeWidgetItem* item)
{
    addTopLevelItem(item);
    return topLevelItemCount() - 1;
}
