// SPDX-License-Identifier: MIT
// Draws the library's class images and tree glyphs with QPainter and writes
// them as PNG files, each at 1x and 2x:
//   qoricons OUTDIR   writes OUTDIR/classes/<Class>.png, <Class>@2x.png
//                     and OUTDIR/glyphs/<Name>.png, <Name>@2x.png
// Every picture is drawn in its own logical pixel grid (24 by 24 for the
// classes, 16 by 16 for the glyphs) and scaled by the painter, so the 2x
// files are drawn, not enlarged. One-pixel outlines sit on half-pixel
// coordinates: they hit whole device pixels at both scales.
#include <QColor>
#include <QCoreApplication>
#include <QDir>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QPolygonF>
#include <QTextStream>

#include <cmath>
#include <functional>
#include <numbers>
#include <vector>

namespace {

// A few colours shared by every picture.
namespace Pal {
const QColor Ink(0x33, 0x3f, 0x4f);       // outlines
const QColor Face(0xe4, 0xe9, 0xef);      // raised faces of controls
const QColor Paper(0xff, 0xff, 0xff);     // editable areas
const QColor Shade(0xb9, 0xc4, 0xd1);     // headers, grooves, sunken parts
const QColor Text(0x5a, 0x68, 0x7a);      // lines standing for text
const QColor Accent(0x2f, 0x7f, 0xd8);    // values, selection, highlights
const QColor AccentDark(0x1c, 0x58, 0xa0);
const QColor Green(0x2f, 0x9a, 0x44);
const QColor Orange(0xe6, 0x86, 0x1f);    // non-visual things
const QColor Lcd(0x22, 0x2a, 0x22);
const QColor LcdOn(0x6c, 0xe0, 0x5a);
} // namespace Pal

// ---- drawing helpers, in logical pixels --------------------------------

// A rectangle covering the pixel cells x..x+w-1, y..y+h-1, its outline on
// the outermost cells.
void box(QPainter &p, qreal x, qreal y, qreal w, qreal h, const QColor &fill, const QColor &line = Pal::Ink,
         qreal radius = 0)
{
    p.setPen(line.isValid() ? QPen(line, 1) : QPen(Qt::NoPen));
    p.setBrush(fill.isValid() ? QBrush(fill) : QBrush(Qt::NoBrush));
    const QRectF r(x + 0.5, y + 0.5, w - 1, h - 1);
    if (radius > 0)
        p.drawRoundedRect(r, radius, radius);
    else
        p.drawRect(r);
}

void fill(QPainter &p, qreal x, qreal y, qreal w, qreal h, const QColor &color)
{
    p.fillRect(QRectF(x, y, w, h), color);
}

// A line of text, two pixels high.
void textLine(QPainter &p, qreal x, qreal y, qreal w, const QColor &color = Pal::Text)
{
    fill(p, x, y, w, 2, color);
}

void polygon(QPainter &p, std::initializer_list<QPointF> points, const QColor &color)
{
    p.setPen(Qt::NoPen);
    p.setBrush(color);
    p.drawPolygon(QPolygonF(QList<QPointF>(points)));
}

// Small arrow heads centred on (cx, cy).
void arrowDown(QPainter &p, qreal cx, qreal cy, qreal half, const QColor &color = Pal::Ink)
{
    polygon(p, {{cx - half, cy - half / 2}, {cx + half, cy - half / 2}, {cx, cy + half / 2}}, color);
}

void arrowUp(QPainter &p, qreal cx, qreal cy, qreal half, const QColor &color = Pal::Ink)
{
    polygon(p, {{cx - half, cy + half / 2}, {cx + half, cy + half / 2}, {cx, cy - half / 2}}, color);
}

void arrowRight(QPainter &p, qreal cx, qreal cy, qreal half, const QColor &color = Pal::Ink)
{
    polygon(p, {{cx - half / 2, cy - half}, {cx - half / 2, cy + half}, {cx + half / 2, cy}}, color);
}

void arrowLeft(QPainter &p, qreal cx, qreal cy, qreal half, const QColor &color = Pal::Ink)
{
    polygon(p, {{cx + half / 2, cy - half}, {cx + half / 2, cy + half}, {cx - half / 2, cy}}, color);
}

void circle(QPainter &p, qreal cx, qreal cy, qreal r, const QColor &fillColor, const QColor &line = Pal::Ink,
            qreal width = 1)
{
    p.setPen(line.isValid() ? QPen(line, width) : QPen(Qt::NoPen));
    p.setBrush(fillColor.isValid() ? QBrush(fillColor) : QBrush(Qt::NoBrush));
    p.drawEllipse(QPointF(cx, cy), r, r);
}

void line(QPainter &p, QPointF a, QPointF b, const QColor &color, qreal width = 1)
{
    p.setPen(QPen(color, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.drawLine(a, b);
}

void tick(QPainter &p, QPointF a, QPointF b, QPointF c, const QColor &color, qreal width)
{
    p.setPen(QPen(color, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.setBrush(Qt::NoBrush);
    p.drawPolyline(QPolygonF({a, b, c}));
}

// The face of an edit field: white, outlined.
void field(QPainter &p, qreal x, qreal y, qreal w, qreal h)
{
    box(p, x, y, w, h, Pal::Paper, Pal::Ink, 1);
}

// Up and down arrows of a spin box in a button column at x (5 wide).
void spinButtons(QPainter &p, qreal x, qreal y, qreal h)
{
    box(p, x, y, 6, h, Pal::Face, Pal::Ink);
    const qreal mid = y + h / 2;
    fill(p, x + 1, mid - 0.5, 4, 1, Pal::Shade);
    arrowUp(p, x + 3, y + h / 4 + 0.5, 1.8);
    arrowDown(p, x + 3, y + 3 * h / 4 - 0.5, 1.8);
}

// A clock face with hands at ten past two.
void clock(QPainter &p, qreal cx, qreal cy, qreal r, const QColor &rim)
{
    circle(p, cx, cy, r, Pal::Paper, rim, r >= 6 ? 1.5 : 1);
    line(p, {cx, cy}, {cx, cy - r * 0.62}, Pal::Ink, r >= 6 ? 1.5 : 1);
    line(p, {cx, cy}, {cx + r * 0.5, cy + r * 0.18}, Pal::Ink, r >= 6 ? 1.5 : 1);
}

// A calendar page: a coloured top and a grid of days.
void calendarPage(QPainter &p, qreal x, qreal y, qreal size)
{
    box(p, x, y, size, size, Pal::Paper, Pal::Ink);
    fill(p, x + 1, y + 1, size - 2, 2, Pal::Accent);
    for (qreal dy = y + 4; dy < y + size - 1; dy += 2)
        for (qreal dx = x + 2; dx < x + size - 2; dx += 2)
            fill(p, dx, dy, 1, 1, Pal::Text);
}

// A popup menu panel with a drop shadow, its items and a highlighted one.
void menuPanel(QPainter &p, qreal x, qreal y, qreal w, qreal h, int highlighted)
{
    fill(p, x + 2, y + 2, w, h, QColor(0, 0, 0, 60));
    box(p, x, y, w, h, Pal::Paper, Pal::Ink);
    for (int i = 0; (y + 2 + i * 4 + 2) <= y + h - 2; ++i) {
        const qreal iy = y + 2 + i * 4;
        if (i == highlighted) {
            fill(p, x + 1, iy - 1, w - 2, 4, Pal::Accent);
            textLine(p, x + 3, iy, w - 8, Pal::Paper);
        } else {
            textLine(p, x + 3, iy, w - 8 - (i % 2) * 3);
        }
    }
}

// A seven-segment digit in a 5x9 cell at (x, y); segments a..g as bits.
void sevenSegment(QPainter &p, qreal x, qreal y, unsigned segments)
{
    const QColor on = Pal::LcdOn;
    const QColor off(0x3a, 0x48, 0x3a);
    auto seg = [&](unsigned bit, qreal sx, qreal sy, qreal w, qreal h) {
        fill(p, sx, sy, w, h, (segments & bit) ? on : off);
    };
    seg(0x01, x + 1, y, 3, 1);         // a
    seg(0x02, x + 4, y + 1, 1, 3);     // b
    seg(0x04, x + 4, y + 5, 1, 3);     // c
    seg(0x08, x + 1, y + 8, 3, 1);     // d
    seg(0x10, x, y + 5, 1, 3);         // e
    seg(0x20, x, y + 1, 1, 3);         // f
    seg(0x40, x + 1, y + 4, 3, 1);     // g
}

// ---- the stock widget classes (24 by 24) --------------------------------

// A raised button face, shaded along its lower edge (shade pixels high).
void buttonFace(QPainter &p, qreal x, qreal y, qreal w, qreal h, qreal radius, qreal shade)
{
    box(p, x, y, w, h, Pal::Face, Pal::Ink, radius);
    fill(p, x + 1, y + h - 1 - shade, w - 2, shade, QColor(0xcf, 0xd7, 0xe1));
    box(p, x, y, w, h, QColor(), Pal::Ink, radius);
}

void drawPushButton(QPainter &p)
{
    buttonFace(p, 1, 5, 22, 14, 2.5, 4);
    textLine(p, 6, 11, 12, Pal::Ink);
}

void drawToolButton(QPainter &p)
{
    box(p, 3, 3, 18, 18, Pal::Face, Pal::Ink, 2);
    // the button's picture: a small blue square and an orange dot
    box(p, 6, 6, 9, 9, Pal::Accent, Pal::AccentDark);
    circle(p, 14, 14, 3, Pal::Orange, Pal::Ink);
    arrowDown(p, 18, 18.5, 1.6);
}

void drawLabel(QPainter &p)
{
    QPainterPath a;
    a.moveTo(2, 17);
    a.lineTo(7, 3);
    a.lineTo(12, 17);
    p.setPen(QPen(Pal::Ink, 2.2, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
    p.setBrush(Qt::NoBrush);
    p.drawPath(a);
    line(p, {4.3, 12}, {9.7, 12}, Pal::Ink, 2);
    textLine(p, 14, 9, 8);
    textLine(p, 14, 13, 6);
    fill(p, 2, 20, 20, 1, Pal::Accent);
}

void drawLineEdit(QPainter &p)
{
    field(p, 1, 6, 22, 12);
    textLine(p, 4, 11, 10);
    fill(p, 16, 9, 1, 7, Pal::Accent);
}

// A text area with a vertical scroll bar; lines(y) draws the text.
void textArea(QPainter &p, const std::function<void()> &lines)
{
    field(p, 1, 2, 22, 20);
    lines();
    fill(p, 18, 3, 1, 18, Pal::Shade);
    fill(p, 19, 3, 3, 18, Pal::Face);
    fill(p, 19, 5, 3, 6, Pal::Shade);
}

void drawTextEdit(QPainter &p)
{
    textArea(p, [&] {
        // rich text: a heading, a coloured word, a bold line
        fill(p, 4, 5, 9, 3, Pal::Ink);
        textLine(p, 4, 10, 5);
        textLine(p, 10, 10, 6, Pal::Accent);
        textLine(p, 4, 14, 12);
        textLine(p, 4, 18, 8, Pal::Orange);
    });
}

void drawPlainTextEdit(QPainter &p)
{
    textArea(p, [&] {
        for (int i = 0; i < 5; ++i)
            fill(p, 4, 5 + i * 3, i % 2 ? 9 : 12, 1, Pal::Text);
    });
}

void drawCheckBox(QPainter &p)
{
    box(p, 1, 6, 12, 12, Pal::Paper, Pal::Ink, 1.5);
    tick(p, {3.5, 12}, {6, 14.5}, {10.5, 8.5}, Pal::Green, 2);
    textLine(p, 15, 11, 8);
}

void drawRadioButton(QPainter &p)
{
    circle(p, 7, 12, 5.5, Pal::Paper);
    circle(p, 7, 12, 2.8, Pal::Accent, QColor());
    textLine(p, 15, 11, 8);
}

void drawComboBox(QPainter &p)
{
    field(p, 1, 6, 22, 12);
    textLine(p, 4, 11, 9);
    box(p, 15, 6, 8, 12, Pal::Face, Pal::Ink);
    arrowDown(p, 19, 12, 2.5);
}

// A spin box's field and buttons, from y down h pixels; content() draws
// what the field shows.
void spinField(QPainter &p, qreal y, qreal h, const std::function<void()> &content)
{
    field(p, 1, y, 22, h);
    content();
    spinButtons(p, 17, y, h);
}

void drawSpinBox(QPainter &p)
{
    spinField(p, 6, 12, [&] {
        // "12": a one and a two as strokes
        fill(p, 5, 9, 2, 6, Pal::Ink);
        QPainterPath two;
        two.moveTo(8.5, 10);
        two.cubicTo(9, 8.3, 12.5, 8.3, 12.5, 10.4);
        two.lineTo(8.6, 14.3);
        two.lineTo(12.8, 14.3);
        p.setPen(QPen(Pal::Ink, 1.4));
        p.setBrush(Qt::NoBrush);
        p.drawPath(two);
    });
}

void drawDoubleSpinBox(QPainter &p)
{
    spinField(p, 6, 12, [&] {
        fill(p, 4, 9, 2, 6, Pal::Ink);
        fill(p, 7, 13, 2, 2, Pal::Accent);
        box(p, 10, 9, 5, 6, QColor(), Pal::Ink);
    });
}

void drawSlider(QPainter &p)
{
    box(p, 1, 10, 22, 4, Pal::Shade, Pal::Ink, 1.5);
    fill(p, 2, 11, 11, 2, Pal::Accent);
    for (int x = 2; x <= 22; x += 5)
        fill(p, x, 19, 1, 3, Pal::Text);
    polygon(p, {{10.5, 5.5}, {16.5, 5.5}, {16.5, 15.5}, {13.5, 18.5}, {10.5, 15.5}}, Pal::Face);
    p.setPen(QPen(Pal::Ink, 1));
    p.setBrush(Qt::NoBrush);
    p.drawPolygon(QPolygonF({{10.5, 5.5}, {16.5, 5.5}, {16.5, 15.5}, {13.5, 18.5}, {10.5, 15.5}}));
}

void drawDial(QPainter &p)
{
    const QPointF c(12, 12);
    for (int i = 0; i <= 8; ++i) {
        const double angle = (225.0 - i * 33.75) * std::numbers::pi / 180.0;
        const QPointF dir(std::cos(angle), -std::sin(angle));
        line(p, c + dir * 9.2, c + dir * 11, Pal::Text, 1);
    }
    circle(p, 12, 12, 7.5, Pal::Face, Pal::Ink, 1);
    const double angle = 60.0 * std::numbers::pi / 180.0;
    const QPointF dir(std::cos(angle), -std::sin(angle));
    line(p, c + dir * 2, c + dir * 6, Pal::Accent, 2);
    circle(p, c.x() + dir.x() * 5.5, c.y() + dir.y() * 5.5, 1.4, Pal::Accent, QColor());
}

void drawProgressBar(QPainter &p)
{
    box(p, 1, 7, 22, 10, Pal::Paper, Pal::Ink, 1.5);
    for (int i = 0; i < 4; ++i)
        fill(p, 3 + i * 4, 9, 3, 6, Pal::Green);
}

void drawDateEdit(QPainter &p)
{
    spinField(p, 5, 14, [&] {
        calendarPage(p, 3, 7, 10);
        textLine(p, 14, 11, 2);
    });
}

void drawTimeEdit(QPainter &p)
{
    spinField(p, 5, 14, [&] {
        clock(p, 8, 12, 4.5, Pal::Accent);
        textLine(p, 14, 11, 2);
    });
}

void drawDateTimeEdit(QPainter &p)
{
    spinField(p, 5, 14, [&] {
        calendarPage(p, 2, 8, 8);
        clock(p, 13, 12, 3.5, Pal::Accent);
    });
}

void drawGroupBox(QPainter &p)
{
    box(p, 1, 5, 22, 17, QColor(), Pal::Ink, 1.5);
    fill(p, 3, 4, 12, 3, QColor(0, 0, 0, 0));
    p.save();
    p.setCompositionMode(QPainter::CompositionMode_Clear);
    fill(p, 3, 4, 12, 3, Qt::black);
    p.restore();
    textLine(p, 4, 4, 10, Pal::Ink);
    textLine(p, 5, 10, 10);
    box(p, 5, 14, 14, 5, Pal::Face, Pal::Text, 1);
}

void drawFrame(QPainter &p)
{
    // a sunken panel: dark edges above and left, light ones below and right
    fill(p, 2, 2, 20, 20, Pal::Face);
    fill(p, 2, 2, 20, 2, Pal::Text);
    fill(p, 2, 2, 2, 20, Pal::Text);
    fill(p, 4, 20, 18, 2, Pal::Paper);
    fill(p, 20, 4, 2, 18, Pal::Paper);
    box(p, 1, 1, 22, 22, QColor(), Pal::Ink);
}

void drawWidget(QPainter &p)
{
    box(p, 2, 2, 20, 20, Pal::Face, Pal::Ink);
    for (int y = 5; y <= 19; y += 4)
        for (int x = 5; x <= 19; x += 4)
            fill(p, x, y, 1, 1, Pal::Text);
    box(p, 7, 9, 10, 6, Pal::Paper, Pal::Accent);
}

void drawTabWidget(QPainter &p)
{
    box(p, 9, 2, 8, 6, Pal::Shade, Pal::Ink, 1);
    box(p, 1, 7, 22, 16, Pal::Face, Pal::Ink);
    box(p, 1, 2, 9, 7, Pal::Face, Pal::Ink, 1);
    fill(p, 2, 7, 7, 2, Pal::Face);
    textLine(p, 3, 4, 5, Pal::Ink);
    textLine(p, 4, 12, 12);
    textLine(p, 4, 16, 8);
}

void drawStackedWidget(QPainter &p)
{
    box(p, 8, 1, 15, 13, Pal::Shade, Pal::Ink);
    box(p, 5, 4, 15, 13, Pal::Face, Pal::Ink);
    box(p, 2, 7, 15, 13, Pal::Paper, Pal::Ink);
    textLine(p, 4, 10, 9);
    textLine(p, 4, 14, 6);
    arrowLeft(p, 17, 22, 1.8, Pal::Accent);
    arrowRight(p, 21, 22, 1.8, Pal::Accent);
}

void drawToolBox(QPainter &p)
{
    box(p, 2, 1, 20, 22, Pal::Paper, Pal::Ink);
    box(p, 2, 1, 20, 5, Pal::Face, Pal::Ink);
    textLine(p, 5, 3, 8, Pal::Ink);
    box(p, 2, 5, 20, 5, Pal::Accent, Pal::Ink);
    textLine(p, 5, 7, 8, Pal::Paper);
    textLine(p, 5, 12, 11);
    textLine(p, 5, 15, 7);
    box(p, 2, 18, 20, 5, Pal::Face, Pal::Ink);
    textLine(p, 5, 20, 8, Pal::Ink);
}

void drawScrollArea(QPainter &p)
{
    box(p, 1, 1, 22, 22, Pal::Paper, Pal::Ink);
    box(p, 4, 4, 11, 8, Pal::Face, Pal::Accent);
    textLine(p, 4, 14, 12);
    fill(p, 18, 2, 4, 16, Pal::Face);
    fill(p, 19, 4, 2, 6, Pal::Shade);
    fill(p, 2, 18, 16, 4, Pal::Face);
    fill(p, 4, 19, 7, 2, Pal::Shade);
    fill(p, 17, 2, 1, 20, Pal::Shade);
    fill(p, 2, 17, 16, 1, Pal::Shade);
}

void drawListWidget(QPainter &p)
{
    field(p, 1, 1, 22, 22);
    const QColor marks[] = {Pal::Orange, Pal::Paper, Pal::Green, Pal::Accent};
    for (int i = 0; i < 4; ++i) {
        const qreal y = 3 + i * 5;
        if (i == 1)
            fill(p, 2, y - 1, 20, 5, Pal::Accent);
        fill(p, 4, y, 3, 3, marks[i]);
        textLine(p, 9, y, i % 2 ? 9 : 11, i == 1 ? Pal::Paper : Pal::Text);
    }
}

void drawTreeWidget(QPainter &p)
{
    field(p, 1, 1, 22, 22);
    // the branch lines
    fill(p, 5, 8, 1, 12, Pal::Shade);
    fill(p, 6, 12, 4, 1, Pal::Shade);
    fill(p, 6, 19, 4, 1, Pal::Shade);
    // the expanded root
    box(p, 3, 3, 5, 5, Pal::Paper, Pal::Ink);
    fill(p, 4, 5, 3, 1, Pal::Ink);
    textLine(p, 10, 4, 10, Pal::Ink);
    fill(p, 10, 11, 3, 3, Pal::Accent);
    textLine(p, 14, 11, 7);
    fill(p, 10, 18, 3, 3, Pal::Green);
    textLine(p, 14, 18, 5);
}

void drawTableWidget(QPainter &p)
{
    box(p, 1, 2, 22, 20, Pal::Paper, Pal::Ink);
    fill(p, 2, 3, 20, 4, Pal::Face);
    fill(p, 2, 3, 4, 18, Pal::Face);
    fill(p, 12, 12, 5, 4, Pal::Accent);
    for (int y = 7; y <= 17; y += 5)
        fill(p, 2, y, 20, 1, Pal::Shade);
    for (int x = 6; x <= 17; x += 6)
        fill(p, x, 3, 1, 18, Pal::Shade);
    box(p, 1, 2, 22, 20, QColor(), Pal::Ink);
}

void drawCalendarWidget(QPainter &p)
{
    box(p, 1, 1, 22, 22, Pal::Paper, Pal::Ink);
    fill(p, 2, 2, 20, 5, Pal::Accent);
    arrowLeft(p, 5, 4.5, 1.6, Pal::Paper);
    arrowRight(p, 19, 4.5, 1.6, Pal::Paper);
    textLine(p, 8.5, 3.5, 7, Pal::Paper);
    for (int row = 0; row < 5; ++row)
        for (int col = 0; col < 6; ++col) {
            const qreal x = 3 + col * 3;
            const qreal y = 8 + row * 3;
            if (row == 2 && col == 3)
                fill(p, x - 1, y - 1, 4, 4, Pal::Orange);
            else
                fill(p, x, y, 2, 2, col == 5 ? Pal::Accent : Pal::Text);
        }
}

void drawLcdNumber(QPainter &p)
{
    box(p, 1, 5, 22, 14, Pal::Lcd, Pal::Ink, 1.5);
    sevenSegment(p, 4, 7, 0x5b);   // 2
    sevenSegment(p, 10, 7, 0x4f);  // 3
    fill(p, 16, 15, 1, 1, Pal::LcdOn);
    sevenSegment(p, 17, 7, 0x06);  // 1
}

void drawTimer(QPainter &p)
{
    // a stopwatch: the crown, the side button, the face
    fill(p, 10.5, 1, 3, 3, Pal::Ink);
    line(p, {18, 5.5}, {19.5, 4}, Pal::Ink, 2);
    circle(p, 12, 13.5, 9, Pal::Orange, Pal::Ink);
    circle(p, 12, 13.5, 6.5, Pal::Paper, QColor());
    for (int i = 0; i < 12; i += 3) {
        const double angle = i * 30.0 * std::numbers::pi / 180.0;
        const QPointF dir(std::sin(angle), -std::cos(angle));
        line(p, QPointF(12, 13.5) + dir * 5, QPointF(12, 13.5) + dir * 6, Pal::Text, 1);
    }
    line(p, {12, 13.5}, {12, 9}, Pal::Ink, 1.5);
    line(p, {12, 13.5}, {15.5, 15.5}, Pal::Ink, 1.5);
}

// ---- the library's own component classes (24 by 24) ---------------------

void drawDesignCenter(QPainter &p)
{
    // the hub that joins manager, inspector, tree and palette
    const QPointF hub(12, 12);
    const QPointF nodes[] = {{4, 4}, {20, 4}, {4, 20}, {20, 20}};
    for (const QPointF &n : nodes)
        line(p, hub, n, Pal::Ink, 1.5);
    const QColor colors[] = {Pal::Accent, Pal::Green, Pal::Orange, Pal::Shade};
    for (int i = 0; i < 4; ++i)
        box(p, nodes[i].x() - 3, nodes[i].y() - 3, 6, 6, colors[i], Pal::Ink);
    circle(p, 12, 12, 4.5, Pal::Paper, Pal::Ink, 1.5);
    circle(p, 12, 12, 1.8, Pal::Accent, QColor());
}

void drawCompTreeView(QPainter &p)
{
    box(p, 1, 1, 22, 22, Pal::Paper, Pal::Ink);
    fill(p, 5, 8, 1, 12, Pal::Shade);
    for (int y : {11, 15, 19})
        fill(p, 6, y, 3, 1, Pal::Shade);
    // a form with its components, each with its glyph
    box(p, 3, 3, 6, 5, Pal::Face, Pal::Ink);
    fill(p, 4, 4, 4, 1, Pal::Accent);
    textLine(p, 11, 4, 9, Pal::Ink);
    box(p, 9, 9, 4, 4, Pal::Face, Pal::Accent);
    textLine(p, 15, 10, 6);
    fill(p, 9, 14, 4, 3, Pal::Orange);
    textLine(p, 15, 14, 5);
    fill(p, 9, 18, 4, 3, Pal::Accent);
    textLine(p, 15, 18, 6);
}

// The eight grab handles around a rectangle.
void handles(QPainter &p, qreal x, qreal y, qreal w, qreal h)
{
    for (qreal hx : {x - 1.5, x + w / 2 - 1.5, x + w - 1.5})
        for (qreal hy : {y - 1.5, y + h / 2 - 1.5, y + h - 1.5})
            if (hx != x + w / 2 - 1.5 || hy != y + h / 2 - 1.5)
                box(p, hx, hy, 3, 3, Pal::Ink, QColor());
}

void drawDesignManager(QPainter &p)
{
    box(p, 1, 1, 22, 22, Pal::Face, Pal::Ink);
    for (int y = 4; y <= 20; y += 4)
        for (int x = 4; x <= 20; x += 4)
            fill(p, x, y, 1, 1, Pal::Text);
    box(p, 6, 8, 12, 8, Pal::Accent, Pal::AccentDark, 1);
    textLine(p, 9, 11, 6, Pal::Paper);
    handles(p, 6, 8, 12, 8);
}

void drawDesignCompPopupMenu(QPainter &p)
{
    menuPanel(p, 3, 2, 17, 19, 1);
}

void drawDesignCompPopupMenuEx(QPainter &p)
{
    menuPanel(p, 1, 2, 13, 19, 1);
    arrowRight(p, 11.5, 8, 1.5, Pal::Paper);
    menuPanel(p, 13, 6, 9, 12, -1);
}

void drawDefDesignCompPopupMenu(QPainter &p)
{
    menuPanel(p, 6, 4, 16, 18, 2);
    // the right click that opens it
    const QPolygonF arrow({{1, 1}, {1, 11}, {3.6, 8.6}, {5.4, 12.6}, {7, 11.9}, {5.2, 8}, {8.6, 8}});
    p.setPen(QPen(Pal::Paper, 1.2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.setBrush(Pal::Ink);
    p.drawPolygon(arrow.translated(0.5, 0.5));
}

void drawObjInspector(QPainter &p)
{
    box(p, 1, 1, 22, 22, Pal::Paper, Pal::Ink);
    fill(p, 2, 2, 20, 4, Pal::Face);
    textLine(p, 4, 3, 8, Pal::Ink);
    fill(p, 11, 6, 1, 16, Pal::Shade);
    for (int i = 0; i < 4; ++i) {
        const qreal y = 8 + i * 4;
        fill(p, 2, y + 2.5, 20, 1, Pal::Face);
        textLine(p, 3, y, i % 2 ? 5 : 7);
        if (i == 2) {
            fill(p, 12, y - 1, 10, 4, Pal::Accent);
            arrowDown(p, 19.5, y + 1, 1.5, Pal::Paper);
        } else {
            textLine(p, 13, y, i % 2 ? 7 : 5, Pal::Accent);
        }
    }
}

void drawClassesImageList(QPainter &p)
{
    // three pictures in a strip
    const QColor skies[] = {Pal::Orange, Pal::Green, Pal::Accent};
    for (int i = 0; i < 3; ++i) {
        const qreal x = 1 + i * 4;
        const qreal y = 9 - i * 4;
        box(p, x, y, 12, 12, Pal::Paper, Pal::Ink);
        fill(p, x + 1, y + 1, 10, 10, skies[i].lighter(160));
        polygon(p, {{x + 1, y + 11}, {x + 5, y + 5}, {x + 8, y + 9}, {x + 9, y + 8}, {x + 11, y + 11}}, skies[i]);
        circle(p, x + 8.5, y + 3.5, 1.3, Pal::Paper, QColor());
    }
    for (int i = 0; i < 3; ++i)
        fill(p, 14 + i * 3, 21, 2, 2, Pal::Ink);
}

// A tool bar of class buttons, the second pressed, starting at y.
void paletteButtons(QPainter &p, qreal y)
{
    box(p, 1, y, 22, 9, Pal::Face, Pal::Ink);
    box(p, 9, y + 1, 7, 7, Pal::Shade, Pal::AccentDark);
    // a button, a check box, a timer
    box(p, 3, y + 3, 5, 3, Pal::Paper, Pal::Ink);
    box(p, 10.5, y + 2.5, 4, 4, Pal::Paper, Pal::Ink);
    tick(p, {11.5, y + 4.5}, {12.5, y + 5.5}, {14, y + 3}, Pal::Green, 1);
    circle(p, 19.5, y + 4.5, 2.5, Pal::Orange, Pal::Ink);
}

void drawCompPalleteToolBar(QPainter &p)
{
    paletteButtons(p, 7);
    fill(p, 2, 19, 20, 2, Pal::Shade);
}

void drawCompPalleteTab(QPainter &p)
{
    box(p, 9, 3, 7, 5, Pal::Shade, Pal::Ink, 1);
    box(p, 15, 3, 7, 5, Pal::Shade, Pal::Ink, 1);
    box(p, 1, 2, 9, 7, Pal::Face, Pal::Ink, 1);
    fill(p, 2, 4, 6, 2, Pal::Accent);
    paletteButtons(p, 8);
    fill(p, 2, 8, 7, 1, Pal::Face);
    fill(p, 1, 18, 22, 1, Pal::Ink);
}

// ---- the tree glyphs (16 by 16) ------------------------------------------

void drawGlyphEmpty(QPainter &p)
{
    // a blank node: an empty frame
    box(p, 2, 2, 12, 12, Pal::Paper, Pal::Text, 1.5);
    fill(p, 7, 7, 2, 2, Pal::Shade);
}

void drawGlyphComp(QPainter &p)
{
    // a box standing alone: a non-visual component
    const QPolygonF top({{8, 1.5}, {14.5, 4.5}, {8, 7.5}, {1.5, 4.5}});
    const QPolygonF left({{1.5, 4.5}, {8, 7.5}, {8, 14.5}, {1.5, 11.5}});
    const QPolygonF right({{8, 7.5}, {14.5, 4.5}, {14.5, 11.5}, {8, 14.5}});
    p.setPen(QPen(Pal::Ink, 1, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.setBrush(Pal::Orange.lighter(140));
    p.drawPolygon(top);
    p.setBrush(Pal::Orange);
    p.drawPolygon(left);
    p.setBrush(Pal::Orange.darker(130));
    p.drawPolygon(right);
}

void drawGlyphControl(QPainter &p)
{
    buttonFace(p, 1, 4, 14, 9, 1.5, 2);
    textLine(p, 4, 7, 8, Pal::Accent);
}

void drawGlyphForm(QPainter &p)
{
    box(p, 1, 2, 14, 12, Pal::Face, Pal::Ink);
    fill(p, 2, 3, 12, 3, Pal::Accent);
    fill(p, 11, 4, 2, 1, Pal::Paper);
    box(p, 3, 8, 6, 4, Pal::Paper, Pal::Text);
}

// ---- the palette (24 by 24) ------------------------------------------------

void drawDeselector(QPainter &p)
{
    // the pointer: choosing it inserts nothing, a click selects
    const QPolygonF arrow({{7, 3}, {7, 19}, {10.5, 15.5}, {13.5, 21.5}, {16, 20.5}, {13, 14.5}, {18, 14.5}});
    p.setPen(QPen(Pal::Ink, 1.2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.setBrush(Pal::Paper);
    p.drawPolygon(arrow);
}

struct Picture
{
    const char *name;
    void (*draw)(QPainter &);
};

const Picture classPictures[] = {
    {"QPushButton", drawPushButton},
    {"QToolButton", drawToolButton},
    {"QLabel", drawLabel},
    {"QLineEdit", drawLineEdit},
    {"QTextEdit", drawTextEdit},
    {"QPlainTextEdit", drawPlainTextEdit},
    {"QCheckBox", drawCheckBox},
    {"QRadioButton", drawRadioButton},
    {"QComboBox", drawComboBox},
    {"QSpinBox", drawSpinBox},
    {"QDoubleSpinBox", drawDoubleSpinBox},
    {"QSlider", drawSlider},
    {"QDial", drawDial},
    {"QProgressBar", drawProgressBar},
    {"QDateEdit", drawDateEdit},
    {"QTimeEdit", drawTimeEdit},
    {"QDateTimeEdit", drawDateTimeEdit},
    {"QGroupBox", drawGroupBox},
    {"QFrame", drawFrame},
    {"QWidget", drawWidget},
    {"QTabWidget", drawTabWidget},
    {"QStackedWidget", drawStackedWidget},
    {"QToolBox", drawToolBox},
    {"QScrollArea", drawScrollArea},
    {"QListWidget", drawListWidget},
    {"QTreeWidget", drawTreeWidget},
    {"QTableWidget", drawTableWidget},
    {"QCalendarWidget", drawCalendarWidget},
    {"QLCDNumber", drawLcdNumber},
    {"QTimer", drawTimer},
    {"TQorDesignCenter", drawDesignCenter},
    {"TQorCompTreeView", drawCompTreeView},
    {"TQorDesignManager", drawDesignManager},
    {"TQorDesignCompPopupMenu", drawDesignCompPopupMenu},
    {"TQorDesignCompPopupMenuEx", drawDesignCompPopupMenuEx},
    {"TQorDefDesignCompPopupMenu", drawDefDesignCompPopupMenu},
    {"TQorObjInspector", drawObjInspector},
    {"TQorClassesImageList", drawClassesImageList},
    {"TQorCompPalleteToolBar", drawCompPalleteToolBar},
    {"TQorCompPalleteTab", drawCompPalleteTab},
};

const Picture glyphPictures[] = {
    {"GlyphDefEmpty", drawGlyphEmpty},
    {"GlyphDefComp", drawGlyphComp},
    {"GlyphDefControl", drawGlyphControl},
    {"GlyphDefForm", drawGlyphForm},
};

const Picture palettePictures[] = {
    {"Deselector", drawDeselector},
};

QImage render(const Picture &picture, int size, int scale)
{
    QImage image(size * scale, size * scale, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);
    p.scale(scale, scale);
    picture.draw(p);
    p.end();
    return image.convertToFormat(QImage::Format_ARGB32);
}

bool writeAll(const QDir &dir, const char *folder, const Picture *begin, const Picture *end, int size)
{
    if (!dir.mkpath(QString::fromLatin1(folder)))
        return false;
    for (const Picture *picture = begin; picture != end; ++picture)
        for (int scale : {1, 2}) {
            const QString file = dir.filePath(QString::fromLatin1(folder) + u'/' + QString::fromLatin1(picture->name)
                                              + (scale == 2 ? QStringLiteral("@2x") : QString()) + QStringLiteral(".png"));
            if (!render(*picture, size, scale).save(file, "PNG")) {
                QTextStream(stderr) << "qoricons: cannot write " << file << '\n';
                return false;
            }
        }
    return true;
}

} // namespace

int main(int argc, char **argv)
{
    // Painting on images needs no screen.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    const QStringList args = QCoreApplication::arguments();
    if (args.size() != 2) {
        QTextStream(stderr) << "usage: qoricons OUTDIR (writes OUTDIR/classes, OUTDIR/glyphs and OUTDIR/palette)\n";
        return 2;
    }
    const QDir out(args.at(1));
    if (!writeAll(out, "classes", std::begin(classPictures), std::end(classPictures), 24)
        || !writeAll(out, "glyphs", std::begin(glyphPictures), std::end(glyphPictures), 16)
        || !writeAll(out, "palette", std::begin(palettePictures), std::end(palettePictures), 24))
        return 1;
    return 0;
}
