#include "tests/tour/screen.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QPixmap>
#include <QPushButton>
#include <QScreen>
#include <QTest>
#include <QTimer>

namespace {

QPushButton* Accepting_Button(const QFileDialog* dialog)
{
    const auto* buttons = dialog->findChild<QDialogButtonBox*>("buttonBox");

    return buttons->button(dialog->acceptMode() == QFileDialog::AcceptSave ? QDialogButtonBox::Save
                                                                           : QDialogButtonBox::Open);
}

} // namespace

namespace Screen {

bool Take_Picture(QWidget* window, const QString& file)
{
    // Everything that is still to be painted, on the other side of the display's wire too.
    QTest::qWait(150);
    const QRect frame = window->frameGeometry();
    return window->screen()->grabWindow(0, frame.x(), frame.y(), frame.width(), frame.height()).save(file);
}

void Click(QWidget* widget)
{
    QTest::mouseClick(widget, Qt::LeftButton);
}

void Click_Entry(QAbstractItemView* view, const QModelIndex& entry)
{
    view->scrollTo(entry);
    QTest::mouseClick(view->viewport(), Qt::LeftButton, Qt::NoModifier, view->visualRect(entry).center());
}

void Choose_Entry(QComboBox* box, int index)
{
    Click(box);
    QTest::keyClick(box->view(), Qt::Key_Home);
    for (int step = 0; step < index; ++step) {
        QTest::keyClick(box->view(), Qt::Key_Down);
    }
    QTest::keyClick(box->view(), Qt::Key_Return);
}

// The path is pasted: typed letter by letter, the dialog's completion would offer, and now and then take, other names.
void Answer_File_Dialog(const QString& path)
{
    QTimer::singleShot(50, qApp, [path] {
        auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        if (dialog == nullptr || !dialog->isVisible()) {
            Answer_File_Dialog(path);
            return;
        }
        auto* name = dialog->findChild<QLineEdit*>("fileNameEdit");
        QApplication::clipboard()->setText(path);
        name->selectAll();
        QTest::keyClick(name, Qt::Key_V, Qt::ControlModifier);
        Click(Accepting_Button(dialog));
        if (dialog->isVisible()) {
            Answer_File_Dialog(path);
        }
    });
}

} // namespace Screen
