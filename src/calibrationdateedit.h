#pragma once

#include <QDateEdit>

/// A date editor with English names. It shows its date only while it is enabled, and remembers whether the user has
/// changed it.
class TCalibrationDateEdit : public QDateEdit
{
public:
    explicit TCalibrationDateEdit(QWidget* parent = nullptr);

    /// Shows a date of the form "MMM d yyyy"; today for a text that is no such date. It then counts as not edited.
    void Show_Date(const QString& text);

    /// The date as "MMM d yyyy", whether it is on show or not.
    QString Date_Text() const;

    bool Is_Edited() const;
    void Clear_Edited();

protected:
    QString textFromDateTime(const QDateTime& date_time) const override;
    void changeEvent(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    void Mark_Edited();
    bool Is_On_Arrow(const QPoint& position) const;

    bool d_is_edited = false;
    bool d_has_calendar = false;
};
