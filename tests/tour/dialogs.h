#pragma once

#include <QDialogButtonBox>
#include <QString>

#include <functional>

class QDialog;

/// Answers to the modal dialogs that an act is about to open. Arm them before the act; they wait for their dialog.
namespace Dialogs {

/// Looks at the dialog as soon as it is the active window, while the dialog waits.
using TLook = std::function<void(QDialog*)>;

/// Types `name` into the name dialog and presses Return.
void Enter_Name(const QString& name, const TLook& look = nullptr);

/// Clicks "Cancel" in the name dialog.
void Cancel_Name(const TLook& look);

/// Clicks a button of the message box.
void Answer_Question(QDialogButtonBox::StandardButton button, const TLook& look);

/// Pastes `path` into the file dialog and clicks "Open" or "Save".
void Choose_File(const QString& path);

} // namespace Dialogs
