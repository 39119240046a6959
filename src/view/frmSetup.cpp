// SPDX-License-Identifier: MIT
#include "view/frmSetup.h"

#include "base/HelpContexts.h"
#include "forms/FormBuilder.h"
#include "forms/HelpContext.h"
#include "view/PlainTip.h"

#include <QFileInfo>
#include <QLabel>
#include <QStyle>

#include <algorithm>

namespace ostrel {

namespace {

// clang-format off
constexpr ControlRow controls[] = {
    // name       kind          text        parent      left   top  width height
    {"frameCom",  Kind::Frame,  "COM Port", "",          120,  120, 3495, 3495},
    {"optCom(0)", Kind::Option, "COM 1",    "frameCom",  360,  480,    0,    0},
    {"optCom(1)", Kind::Option, "COM 2",    "frameCom",  360, 1080,    0,    0},
    {"optCom(2)", Kind::Option, "COM 3",    "frameCom",  360, 1680,    0,    0},
    {"optCom(3)", Kind::Option, "COM 4",    "frameCom",  360, 2280,    0,    0},
    {"optCom(4)", Kind::Option, "COM 5",    "frameCom",  360, 2880,    0,    0},
    {"optCom(5)", Kind::Option, "COM 6",    "frameCom", 2040,  480,    0,    0},
    {"optCom(6)", Kind::Option, "COM 7",    "frameCom", 2040, 1080,    0,    0},
    {"optCom(7)", Kind::Option, "COM 8",    "frameCom", 2040, 1680,    0,    0},
    {"optCom(8)", Kind::Option, "COM 9",    "frameCom", 2040, 2280,    0,    0},
    {"optCom(9)", Kind::Option, "COM 10",   "frameCom", 2040, 2880,    0,    0},
    {"cmdOk",     Kind::Button, "&OK",      "",          120, 3840, 1455,  400},
    {"cmdCancel", Kind::Button, "&Cancel",  "",         2160, 3840, 1455,  400},
};
// clang-format on

constexpr int margin = 8; // pixels below and to the right of the last control
constexpr int pickedLines = 4;
constexpr qreal smaller = 0.85; // the notes' letters

using Obstacle = PortFacts::Obstacle;

struct ObstacleWord {
    Obstacle obstacle;
    const char *word;
};

constexpr ObstacleWord obstacleWords[] = {
    {Obstacle::Missing, "missing"},
    {Obstacle::NoTerminal, "no port"},
    {Obstacle::NoPermission, "no access"},
    {Obstacle::Held, "in use"},
};

/// The name that the kernel gives the device, also behind a link such as those in /dev/serial.
QString shortName(const QString &device) {
    const QString real = QFileInfo(device).canonicalFilePath();
    const QString path = real.isEmpty() ? device : real;
    return path.startsWith(QLatin1String("/dev/")) ? path.mid(5) : QFileInfo(path).fileName();
}

/// The word stays whole where the name is too long for the width. What is missing is named in the tip alone.
QString shortNote(const PortFacts &facts, bool enabled, const QFontMetrics &font, int width) {
    const auto *found = std::ranges::find(obstacleWords, facts.obstacle, &ObstacleWord::obstacle);
    const bool isObstacle = found != std::end(obstacleWords);
    QString word = isObstacle ? QString::fromLatin1(found->word) : enabled ? QString() : QStringLiteral("in use");
    if (facts.device.isEmpty() || facts.obstacle == Obstacle::Missing)
        return word;
    if (!word.isEmpty())
        word.prepend(QStringLiteral(", "));
    return font.elidedText(shortName(facts.device), Qt::ElideMiddle, width - font.horizontalAdvance(word)) + word;
}

QString reason(const PortFacts &facts) {
    switch (facts.obstacle) {
    case Obstacle::Missing:
        return facts.device.isEmpty() ? QStringLiteral("The computer has no such port.")
                                      : QStringLiteral("This device is not there.");
    case Obstacle::NoTerminal:
        return QStringLiteral("This is no serial port.");
    case Obstacle::NoPermission:
        return facts.by.isEmpty() ? QStringLiteral("You may not open it.")
                                  : QStringLiteral("Only members of the group %1 may open it. "
                                                   "Who joins the group must log in again.")
                                        .arg(facts.by);
    case Obstacle::Held:
        return QStringLiteral("It is in use by %1.")
            .arg(facts.by.isEmpty() ? QStringLiteral("another program") : facts.by);
    case Obstacle::None:
        break;
    }
    return {};
}

} // namespace

frmSetup::frmSetup(PortSetup &setup, bool mayCancel, QWidget *parent)
    : QDialog(parent), setup_(setup), mayCancel_(mayCancel) {
    setObjectName(QStringLiteral("frmSetup"));
    setWindowTitle(QStringLiteral("Data Collection Setup"));
    setHelpContext(*this, HelpContext::ComPort);
    FormBuilder builder(*this);
    builder.build(controls);
    makeNotes();
    setFixedSize(childrenRect().size() + QSize(childrenRect().x() + margin, childrenRect().y() + margin));
    showChoices();
    showPicked();

    auto *cmdOk = builder.control<CommandButton>(QStringLiteral("cmdOk"));
    cmdOk->setDefault(true);
    cmdOk->Click = [this] {
        if (setup_.ok())
            accept();
    };
    auto *cmdCancel = builder.control<CommandButton>(QStringLiteral("cmdCancel"));
    cmdCancel->setEnabled(mayCancel);
    cmdCancel->Click = [this] { reject(); };
}

OptionButton &frmSetup::optCom(int index) const { return *findChild<OptionButton *>(arrayName("optCom", index)); }

/// Puts a line below each button, and the description of the picked port below all. The form was drawn with room for
/// the lines; with a desktop's larger letters it grows.
void frmSetup::makeNotes() {
    QFont small = font();
    small.setPointSizeF(small.pointSizeF() * smaller);
    const int line = QFontMetrics(small).height();
    const auto make = [&](const QString &name, QWidget *parent) {
        auto *label = new QLabel(parent);
        label->setObjectName(name);
        label->setFont(small);
        label->setTextFormat(Qt::PlainText);
        return label;
    };
    const qreal factor = std::max(1.0, qreal(optCom(0).height() + line) / (optCom(1).y() - optCom(0).y()));
    for (QWidget *control : findChildren<QWidget *>()) {
        control->move(control->x(), int(control->y() * factor));
        if (qobject_cast<Frame *>(control) != nullptr)
            control->resize(control->width(), int(control->height() * factor));
    }
    const int indent = style()->pixelMetric(QStyle::PM_ExclusiveIndicatorWidth) +
                       style()->pixelMetric(QStyle::PM_RadioButtonLabelSpacing);
    const int rows = int(facts_.size()) / 2;
    for (int i = 0; i < int(facts_.size()); ++i) {
        const QRect button = optCom(i).geometry();
        QWidget *frame = optCom(i).parentWidget();
        const int right = (i < rows ? optCom(i + rows).x() : frame->width()) - margin / 2;
        QLabel *note = make(arrayName("lblPort", i), frame);
        note->setForegroundRole(QPalette::PlaceholderText);
        note->setGeometry(button.x() + indent, button.bottom() + 1, right - button.x() - indent, line);
    }
    const QRect all = childrenRect();
    QLabel *picked = make(QStringLiteral("lblPicked"), this);
    picked->setWordWrap(true);
    picked->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    picked->setGeometry(all.left(), all.bottom() + margin, all.width(), line * pickedLines);
}

void frmSetup::showChoices() {
    const PortChoices &choices = setup_.choices();
    for (int i = 0; i < int(facts_.size()); ++i) {
        facts_[i] = setup_.factsOf(i + 1);
        OptionButton &button = optCom(i);
        button.setEnabled(choices.enabled[i]);
        button.setValue(i + 1 == setup_.SelectedComPort());
        button.Click = [this, i] {
            setup_.optCom_Click(i);
            showPicked();
        };
        auto *note = findChild<QLabel *>(arrayName("lblPort", i));
        note->setText(shortNote(facts_[i], choices.enabled[i], note->fontMetrics(), note->width()));
        for (QWidget *widget : {static_cast<QWidget *>(&button), static_cast<QWidget *>(note)})
            widget->setToolTip(plainTip(described(i)));
        button.setAccessibleDescription(described(i));
    }
}

/// "/dev/ttyUSB0, FT232R USB UART. It is in use by minicom (process 812)."
QString frmSetup::described(int index) const {
    const PortFacts &facts = facts_[index];
    QStringList names{facts.device, facts.product};
    names.removeAll(QString());
    QStringList sentences{names.join(QStringLiteral(", ")),
                          setup_.isLink(index + 1) ? QStringLiteral("The recorder listens to it now.") : reason(facts)};
    sentences.removeAll(QString());
    return sentences.join(names.isEmpty() ? QString() : QStringLiteral(".\n"));
}

void frmSetup::showPicked() {
    const int port = setup_.SelectedComPort();
    if (port >= 1 && port <= int(facts_.size()))
        findChild<QLabel *>(QStringLiteral("lblPicked"))
            ->setText(QStringLiteral("COM %1: %2").arg(port).arg(described(port - 1)));
}

void frmSetup::reject() {
    if (mayCancel_)
        QDialog::reject();
}

} // namespace ostrel
