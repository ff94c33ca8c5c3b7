#include "src/calibrationdateedit.h"

#include "core/describe.h"

#include <QAbstractItemView>
#include <QCalendarWidget>
#include <QEvent>
#include <QLineEdit>
#include <QLocale>
#include <QMouseEvent>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QStyle>
#include <QStyleOptionComboBox>
#include <QTextCharFormat>

namespace {

const char* const DATE_FORMAT = "MMM d yyyy";

// The parts of the calendar have the tool tip and the text of help of the whole, but no name for a screen reader.
void Describe_Calendar(QCalendarWidget* calendar)
{
    Describe(calendar, QObject::tr("Choose the date"),
             QObject::tr("A click on a day takes it for the date. The arrows at the top turn the months."));
    for (QAbstractItemView* days : calendar->findChildren<QAbstractItemView*>()) {
        days->setAccessibleName(QObject::tr("Days"));
    }
    for (QSpinBox* year : calendar->findChildren<QSpinBox*>()) {
        year->setAccessibleName(QObject::tr("Year"));
    }
}

void Set_Up_Calendar(QCalendarWidget* calendar)
{
    calendar->setLocale(QLocale::c());
    // The red of Qt's weekends cannot be read on a dark ground.
    for (const Qt::DayOfWeek day : {Qt::Saturday, Qt::Sunday}) {
        calendar->setWeekdayTextFormat(day, QTextCharFormat());
    }
    // As in the window, a file is no text for an editor.
    for (QLineEdit* editor : calendar->findChildren<QLineEdit*>()) {
        editor->setAcceptDrops(false);
    }
    Describe_Calendar(calendar);
}

} // namespace

TCalibrationDateEdit::TCalibrationDateEdit(QWidget* parent) : QDateEdit(parent)
{
    setLocale(QLocale::c());
    setDisplayFormat("ddd MMM d yyyy");
    setCalendarPopup(true);
    // Without a date on show Qt would take the editor for narrower than it has to be.
    setMinimumWidth(sizeHint().width());
    connect(this, &QDateEdit::dateChanged, this, &TCalibrationDateEdit::Mark_Edited);
}

void TCalibrationDateEdit::Show_Date(const QString& text)
{
    const QDate shown_date = QLocale::c().toDate(text, DATE_FORMAT);

    setDate(shown_date.isValid() ? shown_date : QDate::currentDate());
    Clear_Edited();
}

QString TCalibrationDateEdit::Date_Text() const
{
    return QLocale::c().toString(date(), DATE_FORMAT);
}

bool TCalibrationDateEdit::Is_Edited() const
{
    return d_is_edited;
}

void TCalibrationDateEdit::Clear_Edited()
{
    d_is_edited = false;
}

QString TCalibrationDateEdit::textFromDateTime(const QDateTime& date_time) const
{
    return isEnabled() ? QDateEdit::textFromDateTime(date_time) : QString();
}

void TCalibrationDateEdit::changeEvent(QEvent* event)
{
    QDateEdit::changeEvent(event);
    if (event->type() == QEvent::EnabledChange) {
        const QSignalBlocker blocker(lineEdit());
        lineEdit()->setText(textFromDateTime(dateTime()));
    }
}

// A press may open the calendar. Made with the page, the two calendars would take a tenth of the program's start.
void TCalibrationDateEdit::mousePressEvent(QMouseEvent* event)
{
    if (!d_has_calendar) {
        Set_Up_Calendar(calendarWidget());
        d_has_calendar = true;
    }
    // Qt takes the frame for an arrow that steps the date up.
    if (Is_On_Arrow(event->pos())) {
        QDateEdit::mousePressEvent(event);
    }
}

bool TCalibrationDateEdit::Is_On_Arrow(const QPoint& position) const
{
    QStyleOptionComboBox option;
    option.initFrom(this);
    option.editable = true;
    return style()->hitTestComplexControl(QStyle::CC_ComboBox, &option, position, this) == QStyle::SC_ComboBoxArrow;
}

void TCalibrationDateEdit::Mark_Edited()
{
    d_is_edited = true;
}
