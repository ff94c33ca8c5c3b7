#pragma once

#include <QItemDelegate>
#include <QPersistentModelIndex>

#include <optional>

class TOptionEditorWidget;

/// The kinds of option that are no selection list, as the value's cell carries them under Qt::UserRole. A selection
/// list carries its choices there instead (QStringList).
enum TOptionKind
{
    TEXT_OPTION = 1,
    PATH_OPTION = 2,
    CHECK_OPTION = 3,
    DATE_TIME_OPTION = 4
};

/// `value` as a date-time option shows it. Names of days and months are English under every locale.
QString Option_Date_Time_Text(const QDateTime& value);

/// Makes and feeds the in-place editors of a TOptionEditorWidget. Only the second column has editors. An editor is
/// named after its option and described as the widget is.
class TOptionItemDelegate : public QItemDelegate
{
    Q_OBJECT

public:
    /// The delegate has no parent: `widget` owns it.
    explicit TOptionItemDelegate(TOptionEditorWidget* widget);

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;

    /// A quarter higher than the base's, to give the editors room.
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

signals:
    /// The user chose `text`, be it new or the one shown, in the selection list of the row whose editor was filled last
    /// (0 before any was).
    void List_Item_Changed(int row, const QString& text);

public slots:
    void Combo_Item_Changed(int item);
    void commitAndCloseEditor();

private:
    QWidget* Create_Line_Editor(QWidget* parent) const;
    QWidget* Create_Path_Editor(QWidget* parent, const QModelIndex& index) const;
    QWidget* Create_Date_Time_Editor(QWidget* parent) const;
    QWidget* Create_Combo_Editor(QWidget* parent, const QStringList& choices) const;
    QWidget* Create_Kind_Editor(int kind, QWidget* parent, const QModelIndex& index) const;

    TOptionEditorWidget* d_widget;

    // The cell whose editor was filled last; it follows its row where rows before it go. Qt fills editors through a
    // const member.
    mutable std::optional<QPersistentModelIndex> d_filled;
};
