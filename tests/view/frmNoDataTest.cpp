// SPDX-License-Identifier: MIT
#include "view/frmNoData.h"

#include <QAbstractButton>
#include <QTimer>
#include <gtest/gtest.h>

namespace {

NoDataAnswer answerTo(const std::function<void(frmNoData &)> &operation) {
    frmNoData form(nullptr);
    QTimer::singleShot(0, &form, [&] { operation(form); });
    return form.ask();
}

TEST(frmNoDataTest, AnswersTheButtonAndOkWhenClosed) {
    const auto pressing = [](const char *name) {
        return answerTo([name](frmNoData &form) { form.findChild<QAbstractButton *>(name)->click(); });
    };
    EXPECT_EQ(pressing("cmdOk"), NoDataAnswer::Ok);
    EXPECT_EQ(pressing("cmdSetup"), NoDataAnswer::Setup);
    EXPECT_EQ(pressing("cmdExit"), NoDataAnswer::Exit);
    EXPECT_EQ(answerTo([](frmNoData &form) { form.close(); }), NoDataAnswer::Ok);
}

} // namespace
