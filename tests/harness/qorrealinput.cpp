// SPDX-License-Identifier: MIT
// XTest from a second Xlib connection of the test process. Kept apart from
// Qt's headers: Xlib's macros (None, Bool, KeyPress, ...) clash with Qt's.
#include "qorrealinput.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QWidget>

#include <X11/XKBlib.h>
#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/extensions/XTest.h>
#include <X11/keysym.h>

#include <cstdlib>

namespace {

Display *display = nullptr;
bool xtestPresent = false;
bool settling = true;

Display *dpy()
{
    if (!display) {
        display = XOpenDisplay(nullptr);
        if (display) {
            int eventBase = 0, errorBase = 0, major = 0, minor = 0;
            xtestPresent = XTestQueryExtension(display, &eventBase, &errorBase, &major, &minor);
        }
    }
    return xtestPresent ? display : nullptr;
}

// Lets Qt read what the server has sent: the fake event is processed by the
// server once XSync returns, and its consequences reach Qt's own connection.
void settle()
{
    if (Display *d = dpy())
        XSync(d, False);
    if (!settling)
        return;
    QDeadlineTimer deadline(5);
    do {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 2);
    } while (!deadline.hasExpired());
}

unsigned int xButton(Qt::MouseButton button)
{
    switch (button) {
    case Qt::RightButton: return 3;
    case Qt::MiddleButton: return 2;
    default: return 1;
    }
}

KeyCode keycodeOf(const char *keysym)
{
    Display *d = dpy();
    if (!d)
        return 0;
    const KeySym sym = XStringToKeysym(keysym);
    return sym == NoSymbol ? 0 : XKeysymToKeycode(d, sym);
}

void fakeKey(const char *keysym, bool down)
{
    Display *d = dpy();
    const KeyCode code = keycodeOf(keysym);
    if (!d || !code)
        return;
    XTestFakeKeyEvent(d, code, down, CurrentTime);
    XFlush(d);
}

const char *modifierKeysym(Qt::KeyboardModifier modifier)
{
    switch (modifier) {
    case Qt::ShiftModifier: return "Shift_L";
    case Qt::ControlModifier: return "Control_L";
    case Qt::AltModifier: return "Alt_L";
    case Qt::MetaModifier: return "Super_L";
    default: return nullptr;
    }
}

constexpr Qt::KeyboardModifier modifierOrder[] = {Qt::ControlModifier, Qt::ShiftModifier,
                                                  Qt::AltModifier, Qt::MetaModifier};

QPoint centreOr(const QWidget *widget, const QPoint &local)
{
    return local == QPoint(-1, -1) ? widget->rect().center() : local;
}

} // namespace

namespace RealInput {

bool open()
{
    return dpy() != nullptr;
}

void setSettling(bool On)
{
    settling = On;
}

QPoint pointer()
{
    Display *d = dpy();
    if (!d)
        return {};
    Window root = 0, child = 0;
    int rootX = 0, rootY = 0, winX = 0, winY = 0;
    unsigned int mask = 0;
    XQueryPointer(d, DefaultRootWindow(d), &root, &child, &rootX, &rootY, &winX, &winY, &mask);
    return {rootX, rootY};
}

void moveTo(const QPoint &global, int steps)
{
    Display *d = dpy();
    if (!d)
        return;
    const QPoint start = pointer();
    steps = std::max(1, steps);
    for (int i = 1; i <= steps; ++i) {
        const QPoint p = start + (global - start) * i / steps;
        XTestFakeMotionEvent(d, -1, p.x(), p.y(), CurrentTime);
        settle();
    }
}

void moveTo(const QWidget *widget, const QPoint &local, int steps)
{
    moveTo(widget->mapToGlobal(local), steps);
}

void press(Qt::MouseButton button)
{
    if (Display *d = dpy()) {
        XTestFakeButtonEvent(d, xButton(button), True, CurrentTime);
        settle();
    }
}

void release(Qt::MouseButton button)
{
    if (Display *d = dpy()) {
        XTestFakeButtonEvent(d, xButton(button), False, CurrentTime);
        settle();
    }
}

void click(const QWidget *widget, const QPoint &local, Qt::MouseButton button,
           Qt::KeyboardModifiers modifiers)
{
    // Two steps: under Xvfb without a window manager the first motion into
    // a window that was just mapped can be lost.
    moveTo(widget, centreOr(widget, local), 2);
    holdModifiers(modifiers);
    press(button);
    release(button);
    releaseModifiers(modifiers);
}

void clickAt(const QPoint &global, Qt::MouseButton button, Qt::KeyboardModifiers modifiers)
{
    moveTo(global, 2);
    holdModifiers(modifiers);
    press(button);
    release(button);
    releaseModifiers(modifiers);
}

QRect windowNamed(const QString &title, Qt::MatchFlags match)
{
    Display *d = dpy();
    if (!d)
        return {};
    XSync(d, False);
    const Window rootWindow = DefaultRootWindow(d);
    Window root = 0, parent = 0;
    Window *children = nullptr;
    unsigned int count = 0;
    if (!XQueryTree(d, rootWindow, &root, &parent, &children, &count))
        return {};
    const Atom netName = XInternAtom(d, "_NET_WM_NAME", False);
    const Atom utf8 = XInternAtom(d, "UTF8_STRING", False);
    auto nameOf = [&](Window w) {
        QString name;
        Atom type = 0;
        int format = 0;
        unsigned long items = 0, after = 0;
        unsigned char *data = nullptr;
        if (XGetWindowProperty(d, w, netName, 0, 1024, False, utf8, &type, &format, &items, &after, &data) == Success
            && data) {
            name = QString::fromUtf8(reinterpret_cast<const char *>(data), int(items));
            XFree(data);
        }
        if (name.isEmpty()) {
            char *plain = nullptr;
            if (XFetchName(d, w, &plain) && plain) {
                name = QString::fromLocal8Bit(plain);
                XFree(plain);
            }
        }
        return name;
    };
    QRect found;
    // XQueryTree lists the children from the bottom of the stack up.
    for (unsigned int i = count; i-- > 0 && found.isNull();) {
        XWindowAttributes attributes;
        if (!XGetWindowAttributes(d, children[i], &attributes) || attributes.map_state != IsViewable)
            continue;
        const QString name = nameOf(children[i]);
        if ((match & Qt::MatchTypeMask) == Qt::MatchExactly ? name == title : name.contains(title))
            found = QRect(attributes.x, attributes.y, attributes.width, attributes.height);
    }
    if (children)
        XFree(children);
    return found;
}

bool focusWindowAt(const QPoint &global)
{
    Display *d = dpy();
    if (!d)
        return false;
    const Window root = DefaultRootWindow(d);
    Window child = 0;
    int x = 0, y = 0;
    if (!XTranslateCoordinates(d, root, root, global.x(), global.y(), &x, &y, &child) || !child)
        return false;
    XSetInputFocus(d, child, RevertToParent, CurrentTime);
    settle();
    return true;
}

void doubleClick(const QWidget *widget, const QPoint &local)
{
    moveTo(widget, centreOr(widget, local), 2);
    Display *d = dpy();
    if (!d)
        return;
    // Both clicks inside the double-click interval: no settling in between.
    for (int i = 0; i < 2; ++i) {
        XTestFakeButtonEvent(d, 1, True, CurrentTime);
        XTestFakeButtonEvent(d, 1, False, CurrentTime);
    }
    settle();
}

void wheel(const QWidget *widget, int notches, const QPoint &local)
{
    moveTo(widget, centreOr(widget, local), 2);
    Display *d = dpy();
    if (!d)
        return;
    // X reports the wheel as buttons 4 (up) and 5 (down).
    const unsigned int button = notches > 0 ? 4 : 5;
    for (int i = 0; i < std::abs(notches); ++i) {
        XTestFakeButtonEvent(d, button, True, CurrentTime);
        XTestFakeButtonEvent(d, button, False, CurrentTime);
    }
    settle();
}

void drag(const QWidget *widget, const QPoint &from, const QPoint &to, int steps,
          Qt::MouseButton button)
{
    moveTo(widget, from, 2);
    press(button);
    moveTo(widget, to, steps);
    release(button);
}

void keyDown(const char *keysym)
{
    fakeKey(keysym, true);
    settle();
}

void keyUp(const char *keysym)
{
    fakeKey(keysym, false);
    settle();
}

void holdModifiers(Qt::KeyboardModifiers modifiers)
{
    for (Qt::KeyboardModifier m : modifierOrder) {
        if (modifiers.testFlag(m))
            fakeKey(modifierKeysym(m), true);
    }
    settle();
}

void releaseModifiers(Qt::KeyboardModifiers modifiers)
{
    for (Qt::KeyboardModifier m : modifierOrder) {
        if (modifiers.testFlag(m))
            fakeKey(modifierKeysym(m), false);
    }
    settle();
}

void key(const char *keysym, Qt::KeyboardModifiers modifiers)
{
    holdModifiers(modifiers);
    fakeKey(keysym, true);
    fakeKey(keysym, false);
    settle();
    releaseModifiers(modifiers);
}

bool typeText(const QString &text)
{
    Display *d = dpy();
    if (!d)
        return false;
    for (const QChar c : text) {
        const KeySym sym = c == QLatin1Char('\n') ? XK_Return : KeySym(c.unicode());
        const KeyCode code = XKeysymToKeycode(d, sym);
        if (!code)
            return false;
        // The character sits on the shifted level when level 0 of its key
        // gives another one.
        const bool shifted = XkbKeycodeToKeysym(d, code, 0, 0) != sym;
        if (shifted)
            fakeKey("Shift_L", true);
        XTestFakeKeyEvent(d, code, True, CurrentTime);
        XTestFakeKeyEvent(d, code, False, CurrentTime);
        if (shifted)
            fakeKey("Shift_L", false);
        settle();
    }
    return true;
}

void releaseAll()
{
    Display *d = dpy();
    if (!d)
        return;
    for (unsigned int b = 1; b <= 3; ++b)
        XTestFakeButtonEvent(d, b, False, CurrentTime);
    for (Qt::KeyboardModifier m : modifierOrder)
        fakeKey(modifierKeysym(m), false);
    settle();
}

} // namespace RealInput
