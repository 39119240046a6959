// SPDX-License-Identifier: MIT
#include "shell/frmStartup.h"

#include "base/HelpContexts.h"
#include "forms/Controls.h"
#include "forms/HelpContext.h"

#include <QLabel>
#include <QPixmap>
#include <QResizeEvent>

namespace ostrel {

namespace {

constexpr QSize pictureSize(480, 300);
constexpr QRect versionPlace(32, 264, 250, 24); // within the picture

} // namespace

frmStartup::frmStartup()
    : QDialog(nullptr, Qt::Dialog | Qt::CustomizeWindowHint), picSplash_(new QLabel(this)),
      cmdClose_(new CommandButton(this)) {
    setObjectName(QStringLiteral("frmStartup"));
    setAccessibleName(QStringLiteral("Ostrel MS " OSTREL_VERSION ", chart recorder for the Velquin system"));
    setHelpContext(*this, HelpContext::Introduction);
    picSplash_->setObjectName(QStringLiteral("picSplash"));
    // A bitmap made from splash.svg, so that the first window does not wait for gradients and fonts.
    picSplash_->setPixmap(QPixmap(QStringLiteral(":/pictures/splash.png")));
    picSplash_->setFixedSize(pictureSize);
    auto *version = new QLabel(QStringLiteral("Version " OSTREL_VERSION), picSplash_);
    version->setGeometry(versionPlace);
    QPalette ink = version->palette();
    ink.setColor(QPalette::WindowText, QColor(0xb9, 0xd2, 0xec));
    version->setPalette(ink);

    cmdClose_->setObjectName(QStringLiteral("cmdClose"));
    cmdClose_->setText(QStringLiteral("&Close"));
    cmdClose_->setDefault(true);
    cmdClose_->Click = [this] { hide(); };
    cmdClose_->resize(cmdClose_->sizeHint());
    showClose(false);
    setFixedSize(pictureSize);
}

void frmStartup::showClose(bool on) { cmdClose_->setVisible(on); }

void frmStartup::showAbout(QWidget *parent) {
    const QRect window = parent->frameGeometry();
    move(window.center() - rect().center());
    exec();
}

/// Escape closes the window only while the button is shown.
void frmStartup::reject() {
    if (!cmdClose_->isHidden())
        QDialog::reject();
}

void frmStartup::resizeEvent(QResizeEvent *event) {
    CenterSplash();
    cmdClose_->move(width() - cmdClose_->width() * 5 / 4, height() - cmdClose_->height() * 5 / 4);
    cmdClose_->raise();
    QDialog::resizeEvent(event);
}

void frmStartup::CenterSplash() {
    picSplash_->move((width() - picSplash_->width()) / 2, (height() - picSplash_->height()) / 2);
}

} // namespace ostrel
