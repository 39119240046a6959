// SPDX-License-Identifier: MIT
#pragma once

#include "fakes/FakeChart.h"
#include "fakes/FakeCommonDialog.h"
#include "fakes/FakeErrorRoute.h"
#include "fakes/FakePlatform.h"

#include <QApplication>
#include <QCheckBox>
#include <QDialog>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

/// A chart with a desktop around it, and the operator's hand in whatever form is up.
class ReportsFixture : public testing::Test {
protected:
    /// Runs `operation` in the form that `show` brings up, which is closed afterwards if it is still there.
    static void inForm(const std::function<void()> &show, const std::function<void(QDialog &)> &operation) {
        QTimer::singleShot(0, [&] {
            auto &form = dynamic_cast<QDialog &>(*QApplication::activeModalWidget());
            EXPECT_TRUE(QTest::qWaitForWindowActive(&form));
            operation(form);
            form.close();
        });
        show();
    }
    template <typename Control = QAbstractButton>
    static Control &at(const QDialog &form, const char *name) {
        return *form.findChild<Control *>(QLatin1String(name));
    }
    static void click(const QDialog &form, const QStringList &buttons) {
        for (const QString &name : buttons) {
            auto &button = at<QAbstractButton>(form, name.toLatin1());
            QTest::mouseClick(&button, Qt::LeftButton, {}, QPoint(8, button.height() / 2));
        }
    }
    static QString focus() { return QApplication::focusWidget()->objectName(); }

    FakeChart chart;
    FakeCommonDialog ComDlg;
    FakePrompts prompts;
    FakeErrorRoute errors;
};
