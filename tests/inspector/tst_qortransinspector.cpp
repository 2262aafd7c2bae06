// SPDX-License-Identifier: MIT
// The object inspector with the shipped Chinese dictionary: property
// names, values, flags, events and classes shown as labels, a label
// picked with real input stored as the identifier, and back to the
// identifiers.
#include "foundation/qorcomponents.h"
#include "harness/qorguitest.h"
#include "harness/qorrealinput.h"
#include "inspector/qorinspector.h"
#include "inspector/qortransinspector.h"
#include "translation/qortransutils.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QTest>

namespace {

// The line whose name (indent and marker aside) is Label.
int lineOf(TVhoObjInspector &inspector, const QString &label)
{
    TValueListStrings *lines = inspector.Strings();
    for (int i = 0; i < lines->Count(); ++i) {
        if (lines->Names(i).mid(2) == label)
            return i;
    }
    return -1;
}

} // namespace

class tst_QorTransInspector : public QorGuiTest::RealInputTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        RealInputTestCase::initTestCase();
        QorTransMan()->SetDbFileName(QStringLiteral(QORDESIGN_DICT_DB));
        QVERIFY(QorTransMan()->OpenDb());
    }
    void cleanupTestCase() { QorTransMan()->SetDbFileName(QString()); }
    void cleanup() { RealInputTestCase::cleanup(); }

    void namesValuesFlagsEventsAndClassesShowTheirLabels()
    {
        QWidget form;
        form.setObjectName(QStringLiteral("Form1"));
        auto *label = new QLabel(QStringLiteral("Hi"), &form);
        label->setObjectName(QStringLiteral("Label1"));
        label->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
        InsertComponent(&form, label);
        TQorObjInspector inspector;
        inspector.SetActiveComponent(label);
        QVERIFY(lineOf(inspector, QStringLiteral("text")) >= 0);
        QorTranslateInspector(&inspector);
        TValueListStrings *lines = inspector.Strings();
        QCOMPARE(lineOf(inspector, QStringLiteral("text")), -1);
        QCOMPARE(lines->ValueFromIndex(lineOf(inspector, QStringLiteral("文本"))), QStringLiteral("Hi"));
        QCOMPARE(lines->ValueFromIndex(lineOf(inspector, QStringLiteral("焦点策略"))), QStringLiteral("无焦点"));
        QCOMPARE(lines->ValueFromIndex(lineOf(inspector, QStringLiteral("对齐"))), QStringLiteral("[左对齐,垂直居中]"));
        QCOMPARE(lines->ValueFromIndex(lineOf(inspector, QStringLiteral("可用"))), QStringLiteral("是"));
        // Names the dictionary lacks stay as they are.
        QVERIFY(lineOf(inspector, QStringLiteral("buddy")) >= 0 || lineOf(inspector, QStringLiteral("hasSelectedText")) >= 0);
        // The pick list offers labels.
        const int focus = lineOf(inspector, QStringLiteral("焦点策略"));
        QVERIFY(lines->ItemProps(focus).PickList.contains(QStringLiteral("强焦点")));
        // Events.
        inspector.SetPropertyFilterStyles(pfEvent);
        QVERIFY(lineOf(inspector, QStringLiteral("销毁")) >= 0);
        QCOMPARE(lineOf(inspector, QStringLiteral("destroyed")), -1);
        // Classes.
        QCOMPARE(ClassToTransedName(&QPushButton::staticMetaObject), QStringLiteral("按钮"));
        // Back to the identifiers.
        inspector.SetPropertyFilterStyles(pfProperty);
        QorUntranslateInspector(&inspector);
        QVERIFY(lineOf(inspector, QStringLiteral("text")) >= 0);
        QCOMPARE(lines->ValueFromIndex(lineOf(inspector, QStringLiteral("focusPolicy"))), QStringLiteral("NoFocus"));
    }

    void aLabelPickedIsStoredAsTheIdentifier()
    {
        QWidget form;
        auto *button = new QPushButton(QStringLiteral("OK"), &form);
        button->setObjectName(QStringLiteral("Button1"));
        InsertComponent(&form, button);
        TQorObjInspector inspector;
        inspector.resize(320, 600);
        inspector.SetActiveComponent(button);
        QorTranslateInspector(&inspector);
        QVERIFY(QorGuiTest::showAndActivate(&inspector, QPoint(500, 20)));
        const int row = lineOf(inspector, QStringLiteral("焦点策略"));
        QVERIFY(row >= 0);
        QCOMPARE(inspector.Strings()->ValueFromIndex(row), QStringLiteral("强焦点"));
        const QModelIndex cell = inspector.model()->index(row, 1);
        inspector.scrollTo(cell);
        RealInput::click(inspector.viewport(), inspector.visualRect(cell).center());
        QComboBox *combo = nullptr;
        QTRY_VERIFY((combo = inspector.viewport()->findChild<QComboBox *>()) && combo->isVisible());
        RealInput::click(combo, QPoint(combo->width() - 6, combo->height() / 2));
        QTRY_VERIFY(combo->view()->isVisible());
        const QModelIndex choice = combo->view()->model()->index(combo->findText(QStringLiteral("单击焦点")), 0);
        QVERIFY(choice.isValid());
        combo->view()->scrollTo(choice);
        RealInput::click(combo->view()->viewport(), combo->view()->visualRect(choice).center());
        QTRY_COMPARE(button->focusPolicy(), Qt::ClickFocus);
        QTRY_COMPARE(inspector.Strings()->ValueFromIndex(lineOf(inspector, QStringLiteral("焦点策略"))),
                     QStringLiteral("单击焦点"));
    }
};

QTEST_MAIN(tst_QorTransInspector)
#include "tst_qortransinspector.moc"
