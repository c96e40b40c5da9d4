#pragma once

class QMessageBox;
class QWidget;

/// The message boxes that wait for their answer.
namespace waitingBoxes {

/// Brings all of them to the front.
void raise();
/// Brings the one of this window to the front and returns it; null where it has none.
QMessageBox* raiseThatOf(const QWidget* window);

}  // namespace waitingBoxes
