// SPDX-License-Identifier: MIT
// The design messages and the definitions the design surface shares.
#include "designer/qordesigner_p.h"
#include "designer/qordesigner.h"

#include <QFrame>
#include <QLabel>
#include <QLibrary>
#include <QLineEdit>
#include <QMetaEnum>
#include <QPlainTextEdit>
#include <QSpinBox>
#include <QTest>
#include <QTextBrowser>
#include <QTextEdit>

namespace {

const char *const expectedNames[12] = {
    "QOR.SizerMovedMsg",
    "QOR.SizerMoveEndMsg",
    "QOR.SizerMoveStartMsg",
    "QOR.Design.ControlSelected",
    "QOR.Design.ControlSelectedAtPos",
    "QOR.Design.SelectControlChanged",
    "QOR.Design.ControlMoved",
    "QOR.Design.SelectControlMoved",
    "QOR.Design.StartInlineEdit",
    "QOR.Design.EndInlineEdit",
    "QOR.Design.DynamicComponentCreated",
    "QOR.Design.DelSelectControls",
};

QList<quint32> messageVariables()
{
    return {QORM_SizerMoved, QORM_SizerMoveEnd, QORM_SizerMoveStart, QORM_ControlSelected,
            QORM_ControlSelectedAtPos, QORN_SelCtrlChanged, QORN_CtrlMoved, QORN_SelCtrlMoved,
            QORN_StartInlineEdit, QORN_EndInlineEdit, QORN_DynCompCreated, QORN_DelSelCtrls};
}

// Records the design messages it receives; answers StartInlineEdit with 1.
class MessageSink : public QObject
{
public:
    QList<TMessage> received;

protected:
    bool event(QEvent *e) override
    {
        if (e->type() >= QEvent::User && e->type() <= QEvent::MaxUser) {
            auto *m = static_cast<TQorMessageEvent *>(e);
            received.append(m->Message);
            if (m->Msg() == QORN_StartInlineEdit)
                m->SetResult(1);
            return true;
        }
        return QObject::event(e);
    }
};

// A sizer stand-in: moves by the delta of a sizer-moved message unless the
// message comes from itself.
class FollowingSizer : public QObject
{
public:
    QPoint pos;

protected:
    bool event(QEvent *e) override
    {
        if (e->type() == QEvent::Type(QORM_SizerMoved)) {
            const TMessage &m = static_cast<TQorMessageEvent *>(e)->Message;
            if (!IsOwnSizerMessage(m, this)) {
                const auto bits = quint32(quintptr(m.LParam));
                pos += QPoint(qint16(bits & 0xFFFF), qint16(bits >> 16));
            }
            return true;
        }
        return QObject::event(e);
    }
};

class MyLineEdit : public QLineEdit
{
};

template<class E>
QStringList keysOf()
{
    const QMetaEnum me = QMetaEnum::fromType<E>();
    QStringList keys;
    for (int i = 0; i < me.keyCount(); ++i) {
        if (me.value(i) != i)
            return {QStringLiteral("value %1 at index %2").arg(me.value(i)).arg(i)};
        keys << QString::fromLatin1(me.key(i));
    }
    return keys;
}

using ModuleNumberFn = quint32 (*)(const char *);
using ModuleVariablesFn = void (*)(quint32 *);

} // namespace

class tst_QorDesigner : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // Edge cases
    void pointOnTheRightOrBottomEdgeIsInside()
    {
        const QRect r = RectFromEdges(10, 20, 110, 70);
        QVERIFY(PointInRect(QPoint(110, 40), r));
        QVERIFY(PointInRect(QPoint(50, 70), r));
        QVERIFY(PointInRect(QPoint(110, 70), r));
        QVERIFY(PointInRect(QPoint(10, 20), r));
    }

    void rectWhoseRightIsLeftOfItsLeftContainsNoPoint()
    {
        const QRect r = RectFromEdges(100, 0, 50, 100);
        QCOMPARE(RectRight(r), 50);
        for (int x = 40; x <= 110; ++x)
            QVERIFY2(!PointInRect(QPoint(x, 50), r), qPrintable(QString::number(x)));
    }

    void inlineEditingIsForSingleAndMultiLineEditorsNotLabelsOrFrames()
    {
        QLineEdit edit;
        QTextEdit memo;
        QPlainTextEdit plain;
        QLabel label;
        QFrame panel;
        QVERIFY(ControlCanInlineEdit(&edit));
        QVERIFY(ControlCanInlineEdit(&memo));
        QVERIFY(ControlCanInlineEdit(&plain));
        QVERIFY(!ControlCanInlineEdit(&label));
        QVERIFY(!ControlCanInlineEdit(&panel));
    }

    void sizerMovedFromTheReceivingSizerItselfMovesNothing()
    {
        FollowingSizer self, other;
        const qintptr delta = PointToLParam(QPoint(5, -3));
        QorSendMessage(&self, QORM_SizerMoved, quintptr(&self), delta);
        QCOMPARE(self.pos, QPoint(0, 0));
        QorSendMessage(&other, QORM_SizerMoved, quintptr(&self), delta);
        QCOMPARE(other.pos, QPoint(5, -3));
    }

    void twoModulesInOneProcessGetTheSameMessageNumbers()
    {
        QLibrary a(QStringLiteral(QOR_MODULE_A)), b(QStringLiteral(QOR_MODULE_B));
        QVERIFY2(a.load(), qPrintable(a.errorString()));
        QVERIFY2(b.load(), qPrintable(b.errorString()));
        auto numberA = reinterpret_cast<ModuleNumberFn>(a.resolve("qorModuleMessageNumber"));
        auto numberB = reinterpret_cast<ModuleNumberFn>(b.resolve("qorModuleMessageNumber"));
        auto varsA = reinterpret_cast<ModuleVariablesFn>(a.resolve("qorModuleMessageVariables"));
        auto varsB = reinterpret_cast<ModuleVariablesFn>(b.resolve("qorModuleMessageVariables"));
        QVERIFY(numberA && numberB && varsA && varsB);
        QVERIFY(a.fileName() != b.fileName());

        quint32 seenA[12], seenB[12];
        varsA(seenA);
        varsB(seenB);
        const QList<quint32> ours = messageVariables();
        for (int i = 0; i < 12; ++i) {
            QCOMPARE(seenA[i], ours.at(i));
            QCOMPARE(seenB[i], ours.at(i));
            QCOMPARE(numberA(expectedNames[i]), ours.at(i));
            QCOMPARE(numberB(expectedNames[i]), ours.at(i));
        }
        // A name first asked for by one module is known to the other.
        const quint32 fromB = numberB("QOR.Test.OnlyInModules");
        QCOMPARE(numberA("qor.test.onlyinmodules"), fromB);
        QCOMPARE(QorRegisterWindowMessage(QStringLiteral("QOR.Test.OnlyInModules")), fromB);
        QVERIFY(!ours.contains(fromB));
    }

    // The other rules
    void messagesAreRegisteredUnderTheirExactStringsInOrder()
    {
        const QList<quint32> ours = messageVariables();
        for (int i = 0; i < 12; ++i) {
            QCOMPARE(QorDesignMessageNames[i], expectedNames[i]);
            QCOMPARE(QorRegisterWindowMessage(QString::fromLatin1(expectedNames[i])), ours.at(i));
        }
    }

    void messageNumbersAreDistinctQtEventTypes()
    {
        const QList<quint32> ours = messageVariables();
        for (int i = 0; i < ours.size(); ++i) {
            QVERIFY(ours.at(i) >= quint32(QEvent::User) && ours.at(i) <= quint32(QEvent::MaxUser));
            QCOMPARE(ours.count(ours.at(i)), 1);
        }
    }

    void aNameComparesCaseInsensitively()
    {
        QCOMPARE(QorRegisterWindowMessage(QStringLiteral("qor.sizermovedmsg")), QORM_SizerMoved);
        QCOMPARE(QorRegisterWindowMessage(QStringLiteral("QOR.DESIGN.DELSELECTCONTROLS")),
                 QORN_DelSelCtrls);
    }

    void registeringAgainKeepsTheNumberAndANewNameGetsANewOne()
    {
        const quint32 first = QorRegisterWindowMessage(QStringLiteral("QOR.Test.Again"));
        QCOMPARE(QorRegisterWindowMessage(QStringLiteral("QOR.Test.Again")), first);
        const quint32 other = QorRegisterWindowMessage(QStringLiteral("QOR.Test.Other"));
        QVERIFY(other != first);
        QVERIFY(!messageVariables().contains(other));
    }

    void designingFlagIsFalseAtStart() { QCOMPARE(QorDesigning, false); }

    void enumerationValuesAreInOrder()
    {
        QCOMPARE(keysOf<TQorSizerMode>(),
                 QStringList({QStringLiteral("smSingle"), QStringLiteral("smMulti"), QStringLiteral("smConceal"),
                              QStringLiteral("smNone")}));
        QCOMPARE(keysOf<TQorStageSizerMode>(),
                 QStringList(
                     {QStringLiteral("ssmNormal"), QStringLiteral("ssmFixed"), QStringLiteral("ssmFixedTopLeft")}));
        QCOMPARE(keysOf<TControlSelectMode>(),
                 QStringList({QStringLiteral("csmSelect"), QStringLiteral("csmAdd"), QStringLiteral("csmDel"),
                              QStringLiteral("csmToggle"), QStringLiteral("csmClear")}));
        QCOMPARE(keysOf<TFlipChildrenMode>(), QStringList({QStringLiteral("fcSelected"), QStringLiteral("fcAll")}));
        QCOMPARE(keysOf<TQorDesignAlignmentStyle>(),
                 QStringList({QStringLiteral("asNoChange"), QStringLiteral("asLeftOrTop"), QStringLiteral("asCenters"),
                              QStringLiteral("asRightOrBottom"), QStringLiteral("asSpaceEqual"),
                              QStringLiteral("asCenterInWindow")}));
        QCOMPARE(keysOf<TQorDesignSizeStyle>(),
                 QStringList({QStringLiteral("ssNoChange"), QStringLiteral("ssToSmallest"),
                              QStringLiteral("ssToLargest"), QStringLiteral("ssCustom")}));
        QCOMPARE(keysOf<TQorDesignScaleStyle>(), QStringList({QStringLiteral("ssAll"), QStringLiteral("ssSelected")}));
        QCOMPARE(int(smNone), 3);
        QCOMPARE(int(csmClear), 4);
        QCOMPARE(int(asCenterInWindow), 5);
    }

    void mouseDownResultCodes()
    {
        QCOMPARE(mdrNotHandled, 0);
        QCOMPARE(mdrSelectedControl, 101);
        QCOMPARE(mdrSelectedChild, 102);
        QCOMPARE(mdrPassedToParent, 201);
        QCOMPARE(mdrCreatedComponent, 301);
    }

    void shiftGivesToggleAndIsTestedFirst()
    {
        QCOMPARE(SelectModeOfKeyState(MK_SHIFT), csmToggle);
        QCOMPARE(SelectModeOfKeyState(MK_SHIFT | MK_CONTROL | MK_LBUTTON), csmToggle);
    }

    void controlWithoutShiftGivesClear()
    {
        QCOMPARE(SelectModeOfKeyState(MK_CONTROL), csmClear);
        QCOMPARE(SelectModeOfKeyState(MK_CONTROL | MK_LBUTTON), csmClear);
    }

    void noModifierGivesSelect()
    {
        QCOMPARE(SelectModeOfKeyState(0), csmSelect);
        QCOMPARE(SelectModeOfKeyState(MK_LBUTTON | MK_RBUTTON), csmSelect);
    }

    void keyStateOfQtButtonsAndModifiers()
    {
        QCOMPARE(MK_SHIFT, quintptr(4));
        QCOMPARE(MK_CONTROL, quintptr(8));
        QCOMPARE(KeyStateOf(Qt::LeftButton, Qt::ShiftModifier), MK_LBUTTON | MK_SHIFT);
        QCOMPARE(KeyStateOf(Qt::RightButton | Qt::MiddleButton, Qt::ControlModifier),
                 MK_RBUTTON | MK_MBUTTON | MK_CONTROL);
        QCOMPARE(KeyStateOf(Qt::NoButton, Qt::AltModifier), quintptr(0));
    }

    void positionTravelsAsTwoUnsignedWords()
    {
        const qintptr lp = PointToLParam(QPoint(300, 20));
        QCOMPARE(lp, qintptr(20 << 16 | 300));
        QCOMPARE(LParamToPoint(lp), QPoint(300, 20));
        // A negative coordinate comes back as its unsigned word.
        QCOMPARE(LParamToPoint(PointToLParam(QPoint(-1, 5))), QPoint(65535, 5));
    }

    void pointInRectInsideAndOutside()
    {
        const QRect r(10, 10, 20, 20); // edges 10..30
        QVERIFY(PointInRect(QPoint(20, 20), r));
        QVERIFY(!PointInRect(QPoint(9, 20), r));
        QVERIFY(!PointInRect(QPoint(31, 20), r));
        QVERIFY(!PointInRect(QPoint(20, 31), r));
        QVERIFY(!PointInRect(QPoint(20, 9), r));
    }

    void pointInRectCountsTheEdgesQRectLeavesOut()
    {
        const QRect r(0, 0, 10, 10);
        QVERIFY(!r.contains(QPoint(10, 5)));
        QVERIFY(PointInRect(QPoint(10, 5), r));
        QCOMPARE(RectRight(r), 10);
        QCOMPARE(RectBottom(r), 10);
        QCOMPARE(RectFromEdges(1, 2, 11, 22), QRect(1, 2, 10, 20));
    }

    void inlineEditingIncludesSubclassesAndNotOtherEditors()
    {
        QTextBrowser browser;
        MyLineEdit mine;
        QSpinBox spin;
        QVERIFY(ControlCanInlineEdit(&browser));
        QVERIFY(ControlCanInlineEdit(&mine));
        QVERIFY(!ControlCanInlineEdit(&spin));
    }

    void inlineEditingOfNilIsFalse() { QVERIFY(!ControlCanInlineEdit(nullptr)); }

    void dynamicInsertionEventCarriesSenderAndComponent()
    {
        QObject sender, component;
        QObject *gotSender = nullptr, *gotComponent = nullptr;
        TDynInsComponentEvent handler = [&](QObject *s, QObject *c) {
            gotSender = s;
            gotComponent = c;
        };
        handler(&sender, &component);
        QCOMPARE(gotSender, &sender);
        QCOMPARE(gotComponent, &component);
    }

    void postedMessagesArriveInOrderWithTheirParameters()
    {
        MessageSink sink;
        QorPostMessage(&sink, QORM_ControlSelectedAtPos, MK_SHIFT, PointToLParam(QPoint(7, 9)));
        QorPostMessage(&sink, QORM_ControlSelected, MK_SHIFT, qintptr(&sink));
        QorPostMessage(&sink, QORN_DelSelCtrls, 0, 0);
        QVERIFY(sink.received.isEmpty()); // posted: not before the current handler ends
        QTRY_COMPARE(sink.received.size(), 3);
        QCOMPARE(sink.received.at(0).Msg, QORM_ControlSelectedAtPos);
        QCOMPARE(LParamToPoint(sink.received.at(0).LParam), QPoint(7, 9));
        QCOMPARE(sink.received.at(1).Msg, QORM_ControlSelected);
        QCOMPARE(sink.received.at(1).WParam, MK_SHIFT);
        QCOMPARE(sink.received.at(1).LParam, qintptr(&sink));
        QCOMPARE(sink.received.at(2).Msg, QORN_DelSelCtrls);
    }

    void sentMessageReturnsTheResultItsHandlerWrote()
    {
        MessageSink sink;
        QCOMPARE(QorSendMessage(&sink, QORN_StartInlineEdit, 0, 0), qintptr(1));
        QCOMPARE(QorSendMessage(&sink, QORN_EndInlineEdit, 0, 0), qintptr(0));
        QCOMPARE(sink.received.size(), 2);
        QCOMPARE(QorSendMessage(nullptr, QORN_StartInlineEdit, 0, 0), qintptr(0));
    }
};

QTEST_MAIN(tst_QorDesigner)
#include "tst_qordesigner.moc"
