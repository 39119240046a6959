// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>

namespace ostrel {

/// How the operator answered the dialog that reports a lost link; closing it counts as Ok.
enum class NoDataAnswer { Ok, Setup, Exit };

/// Reports that the instrument sends nothing. Made for each showing.
class frmNoData : public QDialog {
    Q_OBJECT
public:
    explicit frmNoData(QWidget *parent);

    /// Shows the form modally until it is answered.
    NoDataAnswer ask();

private:
    NoDataAnswer answer_ = NoDataAnswer::Ok;
};

} // namespace ostrel
