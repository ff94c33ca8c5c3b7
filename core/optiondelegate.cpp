#include "core/optiondelegate.h"

#include "core/choicebox.h"
#include "core/describe.h"
#include "core/optioneditor.h"
#include "core/pathedit.h"

#include <QDateTimeEdit>
#include <QLineEdit>

namespace {

const int VALUE_COLUMN = 1;
const char* const DATE_TIME_FORMAT = "ddd MMM dd hh:mm:ss yyyy AP";

// A text in DATE_TIME_FORMAT as a date and time in UTC, which knows every time that a clock on the wall can show: in
// the local time zone the hour that is skipped in spring would be no time at all. The first moment of 2000 for other
// texts.
QDateTime Parsed_Date_Time(const QString& text)
{
    const QDateTime fallback(QDate(2000, 1, 1), QTime(0, 0), Qt::UTC);
    const QStringList words = text.split(' ');
    if (words.size() != 6) {
        return fallback;
    }
    // Together they would be read in the local time zone.
    const QString date_text = QStringList{words[0], words[1], words[2], words[4]}.join(' ');
    const QString time_text = QStringList{words[3], words[5]}.join(' ');
    const QDate date = QLocale::c().toDate(date_text, "ddd MMM dd yyyy");
    const QTime time = QLocale::c().toTime(time_text, "hh:mm:ss AP");

    return date.isValid() && time.isValid() ? QDateTime(date, time, Qt::UTC) : fallback;
}

} // namespace

QString Option_Date_Time_Text(const QDateTime& value)
{
    return QLocale::c().toString(value, DATE_TIME_FORMAT);
}

TOptionItemDelegate::TOptionItemDelegate(TOptionEditorWidget* widget) : d_widget(widget) {}

QWidget* TOptionItemDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem& /*option*/,
                                           const QModelIndex& index) const
{
    if (index.column() != VALUE_COLUMN) {
        return nullptr;
    }
    const QVariant kind = index.data(Qt::UserRole);
    QWidget* editor = nullptr;

    if (kind.type() == QVariant::Int) {
        editor = Create_Kind_Editor(kind.toInt(), parent, index);
    } else if (kind.type() == QVariant::StringList) {
        editor = Create_Combo_Editor(parent, kind.toStringList());
    }
    if (editor != nullptr) {
        editor->setAutoFillBackground(true);
        editor->setAccessibleName(index.siblingAtColumn(0).data().toString());
        Describe(editor, d_widget->toolTip(), d_widget->whatsThis());
    }
    return editor;
}

void TOptionItemDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const
{
    const QString text = index.data(Qt::EditRole).toString();

    d_filled = QPersistentModelIndex(index);
    if (auto* line_edit = qobject_cast<QLineEdit*>(editor)) {
        line_edit->setText(text);
    } else if (auto* date_time_edit = qobject_cast<QDateTimeEdit*>(editor)) {
        date_time_edit->setDateTime(Parsed_Date_Time(text));
    } else if (auto* combo = qobject_cast<QComboBox*>(editor)) {
        const QSignalBlocker blocker(combo);
        combo->setCurrentIndex(combo->findText(text, Qt::MatchExactly | Qt::MatchCaseSensitive));
    }
}

void TOptionItemDelegate::setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const
{
    if (const auto* line_edit = qobject_cast<QLineEdit*>(editor)) {
        model->setData(index, line_edit->text());
    } else if (const auto* date_time_edit = qobject_cast<QDateTimeEdit*>(editor)) {
        model->setData(index, Option_Date_Time_Text(date_time_edit->dateTime()));
    } else if (const auto* combo = qobject_cast<QComboBox*>(editor)) {
        model->setData(index, combo->currentText());
    }
}

QSize TOptionItemDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    const QSize size = QItemDelegate::sizeHint(option, index);

    return {size.width(), size.height() + size.height() / 4};
}

void TOptionItemDelegate::Combo_Item_Changed(int item)
{
    const auto* combo = qobject_cast<QComboBox*>(sender());
    const int row = d_filled ? d_filled->row() : 0;
    const bool is_row_there = row >= 0;

    if (combo != nullptr && is_row_there && item >= 0 && item < combo->count()) {
        emit List_Item_Changed(row, combo->itemText(item));
    }
}

void TOptionItemDelegate::commitAndCloseEditor()
{
    auto* editor = qobject_cast<QWidget*>(sender());
    const bool is_editor = qobject_cast<QLineEdit*>(editor) != nullptr || // a TPathEdit is one too
                           qobject_cast<QDateTimeEdit*>(editor) != nullptr ||
                           qobject_cast<QComboBox*>(editor) != nullptr;

    if (is_editor) {
        emit commitData(editor);
        emit closeEditor(editor, NoHint);
    }
}

QWidget* TOptionItemDelegate::Create_Kind_Editor(int kind, QWidget* parent, const QModelIndex& index) const
{
    switch (kind) {
    case TEXT_OPTION:
        return Create_Line_Editor(parent);
    case PATH_OPTION:
        return Create_Path_Editor(parent, index);
    case DATE_TIME_OPTION:
        return Create_Date_Time_Editor(parent);
    default: // a check option is toggled by its check box
        return nullptr;
    }
}

QWidget* TOptionItemDelegate::Create_Line_Editor(QWidget* parent) const
{
    auto* editor = new QLineEdit(parent);

    editor->setFrame(false);
    connect(editor, &QLineEdit::returnPressed, this, &TOptionItemDelegate::commitAndCloseEditor);
    return editor;
}

QWidget* TOptionItemDelegate::Create_Path_Editor(QWidget* parent, const QModelIndex& index) const
{
    auto* editor = new TPathEdit(parent);

    editor->setFrame(false);
    editor->Set_Cell(index.row(), index.column());
    connect(editor, &QLineEdit::returnPressed, this, &TOptionItemDelegate::commitAndCloseEditor);
    // Queued: the dialog takes the focus, which closes this editor while its button is still being clicked.
    connect(editor, &TPathEdit::Browse_Path, d_widget, &TOptionEditorWidget::Path_Edit_Browse, Qt::QueuedConnection);
    return editor;
}

QWidget* TOptionItemDelegate::Create_Date_Time_Editor(QWidget* parent) const
{
    auto* editor = new QDateTimeEdit(parent);

    editor->setFrame(false);
    editor->setLocale(QLocale::c());
    editor->setTimeSpec(Qt::UTC);
    editor->setDisplayFormat(DATE_TIME_FORMAT);
    connect(editor, &QDateTimeEdit::editingFinished, this, &TOptionItemDelegate::commitAndCloseEditor);
    return editor;
}

QWidget* TOptionItemDelegate::Create_Combo_Editor(QWidget* parent, const QStringList& choices) const
{
    auto* editor = new TChoiceBox(parent);

    editor->setFrame(false);
    editor->addItems(choices);
    connect(editor, qOverload<int>(&QComboBox::currentIndexChanged), this, &TOptionItemDelegate::Combo_Item_Changed);
    connect(editor, &TChoiceBox::Shown_Item_Chosen, this, &TOptionItemDelegate::Combo_Item_Changed);
    return editor;
}
