// Labels whose figures change every second without the window being laid out
// again: QWidget::updateGeometry() leaves the parent's layout alone when a
// widget's minimum and maximum sizes agree, so a held label changes its text
// at the cost of its own repaint only.
#pragma once

#include <QString>

class QLabel;

namespace view {

// Sets the text of a label held at a steady size. The label grows to its new
// size hint when the text no longer fits and never shrinks while figures
// tick, so the numbers do not make the panel jump either. A label not held
// yet (new, or after a font or style change) is held at its text's size.
void setSteadyText(QLabel* label, const QString& text);
// Holds the label at the size of its current text, smaller if that is
// smaller: texts of another language may be shorter.
void refitSteady(QLabel* label);

} // namespace view
