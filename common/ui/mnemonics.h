// Mnemonics for the captions of a dialog, as its language has them.
#pragma once

class QWidget;

namespace zorvane {

/// Gives the buttons, tabs and captions of fields of `dialog` that have none a mnemonic of their
/// own, as long as there are letters; of two that share one the second gets another. Captions
/// without Latin letters get theirs in brackets behind them. Whatever `Z` would be is left to
/// Alt+Z; what Enter and Esc press needs none, and keeps the one that it has.
void ShareMnemonics(QWidget& dialog);

}  // namespace zorvane
