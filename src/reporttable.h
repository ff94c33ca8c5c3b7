#pragma once

#include "core/optioneditor.h"

/// The table of the report page: an option editor whose rows can be selected, several at a time, and copied as
/// tab-separated text. Extending the selection opens no editor.
class TReportTable : public TOptionEditorWidget
{
    Q_OBJECT

public:
    explicit TReportTable(const QWidget* parent = nullptr);

public slots:
    /// Puts the selected rows on the clipboard as they are shown; does nothing without a selection.
    void Copy_Selection();

protected:
    bool edit(const QModelIndex& index, EditTrigger trigger, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    bool d_is_extending = false;
};
