#include "src/norvexaeditor.h"

#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QAction>
#include <QApplication>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPointer>
#include <QShortcutEvent>

// Typed text reaches the document when its editor is left. A shortcut, a tool button, a drop or the closing of the
// window do not take the focus from the editor, so what was typed is brought home before they act.

namespace {

bool Is_Entry_Editor(const QWidget* editor)
{
    const QWidget* viewport = editor->parentWidget();
    const auto* view = viewport == nullptr ? nullptr : qobject_cast<const QAbstractItemView*>(viewport->parentWidget());

    return view != nullptr && view->viewport() == viewport;
}

QLineEdit* Line_Edit_Of(QWidget* editor)
{
    if (auto* line_edit = qobject_cast<QLineEdit*>(editor)) {
        return line_edit;
    }
    return qobject_cast<QAbstractSpinBox*>(editor) == nullptr ? nullptr : editor->findChild<QLineEdit*>();
}

bool Holds_Uncommitted_Text(QWidget* editor)
{
    const QLineEdit* line_edit = Line_Edit_Of(editor);

    return Is_Entry_Editor(editor) || (line_edit != nullptr && line_edit->isModified());
}

} // namespace

void TNorvexaEditor::Commit_Focused_Editor()
{
    const QPointer<QWidget> editor = focusWidget();

    if (editor.isNull() || !Holds_Uncommitted_Text(editor)) {
        return;
    }
    if (editor->hasFocus()) {
        editor->clearFocus();
        if (!editor.isNull() && editor->isVisible()) {
            editor->setFocus();
        }
        return;
    }
    // A window that is not the active one, as when a file is dropped on it, has no focus to take away.
    QFocusEvent focus_out(QEvent::FocusOut, Qt::OtherFocusReason);
    QApplication::sendEvent(editor, &focus_out);
}

void TNorvexaEditor::Watch_Focused_Editor(QWidget* old, QWidget* now)
{
    Q_UNUSED(old)

    if (now == nullptr || now->window() != this) {
        return;
    }
    if (const QLineEdit* line_edit = Line_Edit_Of(now)) {
        connect(line_edit, &QLineEdit::textEdited, this, &TNorvexaEditor::Enable_Saving, Qt::UniqueConnection);
    }
}

void TNorvexaEditor::Enable_Saving()
{
    d_action_save->setEnabled(true);
    d_action_save_as->setEnabled(true);
}

bool TNorvexaEditor::event(QEvent* event)
{
    if (event->type() == QEvent::ShortcutOverride && static_cast<QKeyEvent*>(event)->matches(QKeySequence::Save)) {
        Commit_Focused_Editor();
    }
    return QMainWindow::event(event);
}

// Save and Save As carry the same key. Qt finds that ambiguous and would trigger neither; the key saves.
bool TNorvexaEditor::eventFilter(QObject* object, QEvent* event)
{
    const bool is_ambiguous_shortcut = (object == d_action_save || object == d_action_save_as) &&
                                       event->type() == QEvent::Shortcut &&
                                       static_cast<QShortcutEvent*>(event)->isAmbiguous();

    if (is_ambiguous_shortcut) {
        d_action_save->trigger();
        return true;
    }
    return QMainWindow::eventFilter(object, event);
}
