#include "core/choicebox.h"

#include <QAbstractItemView>
#include <QEvent>

TChoiceBox::TChoiceBox(QWidget* parent) : QComboBox(parent)
{
    view()->installEventFilter(this);
    view()->viewport()->installEventFilter(this);
    connect(this, qOverload<int>(&QComboBox::currentIndexChanged), this, [this]() { d_is_choosing = false; });
    connect(this, qOverload<int>(&QComboBox::activated), this, &TChoiceBox::Report_Shown_Item);
}

void TChoiceBox::showPopup()
{
    d_is_choosing = false;
    QComboBox::showPopup();
}

bool TChoiceBox::eventFilter(QObject* watched, QEvent* event)
{
    // Every key comes as a ShortcutOverride first, and already at that the list closes on Return.
    if (event->type() == QEvent::MouseButtonPress || event->type() == QEvent::ShortcutOverride) {
        d_is_choosing = true;
    }
    return QComboBox::eventFilter(watched, event);
}

void TChoiceBox::Report_Shown_Item(int item)
{
    // Not set where currentIndexChanged told of a new entry before, nor after a slow click on the closed box: it opens
    // the list under the mouse and is released over the entry shown, which Qt takes for a choice.
    if (d_is_choosing) {
        emit Shown_Item_Chosen(item);
    }
}
