// SPDX-License-Identifier: MIT
#include "forms/FormBuilder.h"

#include "forms/FormPlaces.h"
#include "forms/Twips.h"

#include <QStyle>
#include <QStyleOptionComboBox>

#include <algorithm>

namespace ostrel {

namespace {

QString textOf(const ControlRow &row) { return QString::fromUtf8(row.text); }

template <typename Captioned>
QWidget *captioned(const ControlRow &row, QWidget *parent) {
    auto *widget = new Captioned(parent);
    widget->setText(textOf(row));
    return widget;
}

QWidget *makeControl(const ControlRow &row, QWidget *parent) {
    switch (row.kind) {
    case Kind::Frame:
        return new Frame(textOf(row), row.ink, parent);
    case Kind::Label: {
        auto *label = new QLabel(textOf(row), parent);
        label->setTextFormat(Qt::PlainText);
        label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
        return label;
    }
    case Kind::Led:
        return new Led(parent);
    case Kind::Picture:
        return new Picture(textOf(row), parent);
    case Kind::Text:
        return captioned<TextEntry>(row, parent);
    case Kind::Combo: {
        auto *combo = new ComboEntry(parent);
        combo->setText(textOf(row));
        return combo;
    }
    case Kind::Option:
        return captioned<OptionButton>(row, parent);
    case Kind::Button:
        return captioned<CommandButton>(row, parent);
    case Kind::HiddenButton: {
        QWidget *button = captioned<CommandButton>(row, parent);
        button->hide();
        return button;
    }
    }
    return nullptr;
}

/// The width that a combo box needs around its text: frame, arrow and the margins of the line.
int aroundComboText(const QWidget &combo) {
    constexpr int lineMargins = 4;
    QStyleOptionComboBox box;
    box.initFrom(&combo);
    box.editable = true;
    box.rect = QRect(0, 0, 100, 30);
    const QRect line = combo.style()->subControlRect(QStyle::CC_ComboBox, &box, QStyle::SC_ComboBoxEditField, &combo);
    return box.rect.width() - line.width() + lineMargins;
}

/// The least size in pixels at which the control's text is not cut.
QSize leastSize(const ControlRow &row, const QWidget &control) {
    const QSize text = control.fontMetrics().size(Qt::TextShowMnemonic, textOf(row));
    constexpr QSize entryMargins(8, 6);
    constexpr QSize captionMargins(24, 0);
    switch (row.kind) {
    case Kind::Frame:
        return row.text[0] == '\0' ? QSize() : QSize(text.width() + captionMargins.width(), 0);
    case Kind::Label:
        return text;
    case Kind::Text:
        return text + entryMargins;
    case Kind::Combo:
        return {text.width() + aroundComboText(control), text.height() + entryMargins.height()};
    case Kind::Option:
        return {control.sizeHint().width(), text.height()};
    case Kind::Button:
        return text + QSize(16, 8);
    case Kind::Led:
    case Kind::Picture:
    case Kind::HiddenButton:
        break;
    }
    return {};
}

QSizeF inTwips(const QSize &pixels) { return {Twips::fromPixels(pixels.width()), Twips::fromPixels(pixels.height())}; }

} // namespace

QWidget *FormBuilder::parentOf(const ControlRow &row) const {
    return row.parent[0] == '\0' ? &form_ : control<QWidget>(QString::fromLatin1(row.parent));
}

void FormBuilder::build(std::span<const ControlRow> rows) {
    std::vector<QWidget *> controls;
    std::vector<FormPlace> places;
    for (const ControlRow &row : rows) {
        QWidget *parent = parentOf(row);
        QWidget *widget = makeControl(row, parent);
        widget->setObjectName(QLatin1String(row.name));
        if (row.spoken != nullptr) {
            widget->setAccessibleName(QString::fromUtf8(row.spoken));
            if (row.kind == Kind::Combo) // which takes what it shows for its name
                widget->setAccessibleDescription(widget->accessibleName());
            if (auto *line = widget->findChild<QLineEdit *>()) // of a combo box: a control of its own to a reader
                line->setAccessibleName(widget->accessibleName());
        }
        const auto container = std::find(controls.begin(), controls.end(), parent);
        const QSizeF needs = inTwips(row.width > 0 ? leastSize(row, *widget) : widget->sizeHint());
        const QSizeF size = row.width > 0 ? QSizeF(row.width, row.height) : needs;
        places.push_back({container == controls.end() ? -1 : int(container - controls.begin()),
                          {QPointF(row.left, row.top), size},
                          needs});
        controls.push_back(widget);
    }
    makeRoom(places);
    for (std::size_t i = 0; i < controls.size(); ++i)
        controls[i]->setGeometry(Twips::toPixels(places[i].at));
}

} // namespace ostrel
