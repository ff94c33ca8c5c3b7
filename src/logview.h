#pragma once

#include "src/logline.h"

#include <QPlainTextEdit>

/// The log: lines that can be read, selected by mouse and keyboard, and copied. What is copied is tab-separated, so
/// that the fields land in the columns of a spreadsheet. While its last line is in sight it stays so when the view
/// changes its size.
class TLogView : public QPlainTextEdit
{
    Q_OBJECT

public:
    explicit TLogView(QWidget* parent = nullptr);

    /// Appends lines in one piece, which costs far less than one by one, and brings the last one in sight.
    void Append(std::vector<TLogLine> lines);

protected:
    QMimeData* createMimeDataFromSelection() const override;
    void resizeEvent(QResizeEvent* event) override;
};
