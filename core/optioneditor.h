#pragma once

#include "core/optiondelegate.h"
#include "core/pathedit.h"

#include <QTreeWidget>

#include <memory>

class QDateTime;

/// A list of named options, one to a row: the name in the first column, the value in the second, where it is edited in
/// place by an editor that suits the option's kind. Options are addressed by their row. Filling and clearing the list
/// is no edit: it emits no SelectionListItemChanged, and an open editor is dropped without being committed.
class TOptionEditorWidget : public QTreeWidget
{
    Q_OBJECT

public:
    explicit TOptionEditorWidget(const QWidget* parent = nullptr);
    ~TOptionEditorWidget() override;

    /// Each of these appends one option and returns its row. The five texts at the end are for the caller's own use:
    /// they are kept in columns 2 to 6 of the row, which the widget does not show unless it is given more columns.
    int AddLineEditorOption(const QString& name, const QString& value, const QString& text_2 = QString(),
                            const QString& text_3 = QString(), const QString& text_4 = QString(),
                            const QString& text_5 = QString(), const QString& text_6 = QString());
    int AddLineEditorOption(const QString& name, int value, const QString& text_2 = QString(),
                            const QString& text_3 = QString(), const QString& text_4 = QString(),
                            const QString& text_5 = QString(), const QString& text_6 = QString());
    int AddPathEditorOption(const QString& name, const QString& path);
    int AddCheckOption(const QString& name, bool checked, const QString& text_2 = QString(),
                       const QString& text_3 = QString(), const QString& text_4 = QString(),
                       const QString& text_5 = QString(), const QString& text_6 = QString());
    int AddDateTimeEditorOption(const QString& name, const QDateTime& value);

    /// Shows the choice `default_index` of `items`, which has to be less than their number.
    int AddSelectionList(const QString& name, const QStringList& items, int default_index,
                         const QString& text_2 = QString(), const QString& text_3 = QString(),
                         const QString& text_4 = QString(), const QString& text_5 = QString(),
                         const QString& text_6 = QString());

    /// The name of the option in row `index`; empty if there is no such row.
    QString OptionName(int index) const;

    /// The value as text, "Yes" or "No" for a check option; empty if there is no such row.
    QString OptionResult(int index) const;

    /// Changes the value's text; false if there is no such row.
    bool ChangeOptionText(int index, const QString& text);
    bool ChangeOptionText(int index, int value);

    /// Shows the choice `item` of a selection list. Does nothing for other options or a choice that is not there.
    void ChangeSelectionListOption(int index, int item);

signals:
    /// The user chose `text` in the selection list of row `index`, once for each choice; it may be the text that was
    /// shown before. The receiver may change or clear the options.
    void SelectionListItemChanged(int index, const QString& text);

public slots:
    void Edit_List_Changed(int index, const QString& text);

    /// Asks for a directory, starting at `path`, and shows the one chosen, a separator at its end, in the given cell.
    void Path_Edit_Browse(const QString& path, int row, int column);

protected:
    /// The arrow keys reach the value's column too, so that every option can be edited from the keyboard.
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;

private:
    int Append_Option(QTreeWidgetItem* item);

    std::unique_ptr<TOptionItemDelegate> d_delegate;
};
