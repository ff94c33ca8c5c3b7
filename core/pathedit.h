#pragma once

#include <QLineEdit>

class QToolButton;

/// The in-place editor of a path: a line edit with a "..." button on its right, which asks for the path to be browsed.
class TPathEdit : public QLineEdit
{
    Q_OBJECT

public:
    /// `flags` are added to the window flags of a line edit; a cell's editor needs none.
    explicit TPathEdit(const QWidget* parent = nullptr, Qt::WindowFlags flags = {});

    /// The cell that is edited, which Browse_Path hands on.
    void Set_Cell(int row, int column);

signals:
    void Browse_Path(QString path, int row, int column);

public slots:
    void Browse_Path_Clicked();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    QToolButton* d_browse_button;
    int d_row = 0;
    int d_column = 0;
};
