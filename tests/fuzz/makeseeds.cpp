// SPDX-License-Identifier: MIT
// Writes the seed corpora of the fuzz targets from the library's own
// writers: qorfuzz_seeds DIR writes DIR/<target>/<seed>. The corpora in
// the tree were made with it; run it again when the formats change.

#include "foundation/qorcomponents.h"
#include "foundation/qorstream.h"
#include "foundation/vhoclipbrdutils.h"

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QPushButton>
#include <QSpinBox>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTabWidget>
#include <QTimer>

#include <cstdio>
#include <memory>

namespace {

QString g_root;

void write(const char *Target, const QString &Name, const QByteArray &Bytes)
{
    const QString dir = g_root + QLatin1Char('/') + QLatin1String(Target);
    QDir().mkpath(dir);
    QFile file(dir + QLatin1Char('/') + Name);
    if (!file.open(QIODevice::WriteOnly) || file.write(Bytes) != Bytes.size()) {
        std::fprintf(stderr, "cannot write %s\n", qPrintable(file.fileName()));
        std::exit(1);
    }
}

// A small form of the stock widgets the designer offers, named as a
// designer names them, so that reading it onto the fuzz form clashes.
QWidget *makeForm()
{
    auto *form = new QWidget;
    form->setObjectName(QStringLiteral("Form1"));
    form->setGeometry(0, 0, 320, 200);
    auto *button = new QPushButton(QStringLiteral("OK"), form);
    button->setObjectName(QStringLiteral("Button1"));
    button->setGeometry(8, 8, 75, 25);
    auto *box = new QGroupBox(QStringLiteral("Box"), form);
    box->setObjectName(QStringLiteral("GroupBox2"));
    box->setGeometry(8, 40, 150, 80);
    auto *label = new QLabel(QStringLiteral("Name"), box);
    label->setObjectName(QStringLiteral("Label2"));
    label->setGeometry(6, 20, 60, 18);
    label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    auto *check = new QCheckBox(QStringLiteral("Check"), box);
    check->setObjectName(QStringLiteral("CheckBox1"));
    check->setGeometry(6, 44, 80, 20);
    check->setChecked(true);
    auto *combo = new QComboBox(form);
    combo->setObjectName(QStringLiteral("ComboBox1"));
    combo->setGeometry(170, 8, 100, 24);
    auto *spin = new QSpinBox(form);
    spin->setObjectName(QStringLiteral("SpinBox1"));
    spin->setGeometry(170, 40, 60, 24);
    spin->setRange(-5, 500);
    spin->setValue(42);
    auto *tabs = new QTabWidget(form);
    tabs->setObjectName(QStringLiteral("TabWidget1"));
    tabs->setGeometry(170, 70, 140, 110);
    auto *page = new QWidget;
    page->setObjectName(QStringLiteral("Page1"));
    tabs->addTab(page, QStringLiteral("First"));
    auto *onPage = new QPushButton(QStringLiteral("On page"), page);
    onPage->setObjectName(QStringLiteral("Button2"));
    onPage->setGeometry(4, 4, 70, 24);
    auto *timer = new QTimer(form);
    timer->setObjectName(QStringLiteral("Timer2"));
    timer->setInterval(250);
    AdoptNamedDescendants(form);
    return form;
}

void writeDictionary(const QString &Name, const QList<QStringList> &Rows, bool Indexed)
{
    const QString path = QDir::temp().filePath(QStringLiteral("qorfuzz-seed.sqlite"));
    QFile::remove(path);
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("seed"));
        db.setDatabaseName(path);
        db.open();
        QSqlQuery q(db);
        // The smallest pages keep a dictionary of a few rows at a few KiB.
        q.exec(QStringLiteral("PRAGMA page_size = 512"));
        q.exec(QStringLiteral("CREATE TABLE Dictionary (TranTypeKind TEXT COLLATE NOCASE NOT NULL, TypeName TEXT COLLATE "
                              "NOCASE NOT NULL, Indent TEXT COLLATE NOCASE NOT NULL, CnLabel TEXT COLLATE NOCASE NOT NULL)"));
        if (Indexed) {
            q.exec(QStringLiteral("CREATE INDEX DictionaryByIdent ON Dictionary (TranTypeKind, TypeName, Indent)"));
            q.exec(QStringLiteral("CREATE INDEX DictionaryByLabel ON Dictionary (TranTypeKind, TypeName, CnLabel)"));
            q.exec(QStringLiteral("CREATE INDEX DictionaryByEvent ON Dictionary (TranTypeKind, Indent)"));
        }
        q.prepare(QStringLiteral("INSERT INTO Dictionary VALUES (?, ?, ?, ?)"));
        for (const QStringList &row : Rows) {
            for (int i = 0; i < 4; ++i)
                q.bindValue(i, row.at(i));
            q.exec();
        }
        db.close();
    }
    QSqlDatabase::removeDatabase(QStringLiteral("seed"));
    QFile file(path);
    file.open(QIODevice::ReadOnly);
    write("dictionary", Name, file.readAll());
    file.close();
    QFile::remove(path);
}

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    if (argc != 2) {
        std::fprintf(stderr, "usage: qorfuzz_seeds DIR\n");
        return 2;
    }
    g_root = QString::fromLocal8Bit(argv[1]);

    std::unique_ptr<QWidget> form(makeForm());
    auto *button = form->findChild<QPushButton *>(QStringLiteral("Button1"));
    auto *label = form->findChild<QLabel *>(QStringLiteral("Label2"));
    auto *timer = form->findChild<QTimer *>(QStringLiteral("Timer2"));
    auto *box = form->findChild<QGroupBox *>(QStringLiteral("GroupBox2"));
    auto *tabs = form->findChild<QTabWidget *>(QStringLiteral("TabWidget1"));

    const QList<std::pair<QString, QByteArray>> records{
        {QStringLiteral("button"), ComponentToBytes(button)},
        {QStringLiteral("label"), ComponentToBytes(label)},
        {QStringLiteral("timer"), ComponentToBytes(timer)},
        {QStringLiteral("groupbox"), ComponentToBytes(box)},
        {QStringLiteral("tabwidget"), ComponentToBytes(tabs)},
        {QStringLiteral("form"), ComponentToBytes(form.get())},
        {QStringLiteral("button-timer"), ComponentToBytes(button) + ComponentToBytes(timer)},
    };
    for (const auto &[name, bytes] : records) {
        write("stream", name + QStringLiteral(".qor"), bytes);
        write("streamtext", name + QStringLiteral(".json"), ComponentBinaryToText(bytes).toUtf8());
    }

    // What a copy puts on the clipboard.
    const QList<std::pair<QString, TComponentList>> copies{
        {QStringLiteral("button"), TComponentList{button}},
        {QStringLiteral("groupbox-children"), TComponentList{box}},
        {QStringLiteral("button-timer-tabs"), TComponentList{button, timer, tabs}},
    };
    for (const auto &[name, list] : copies) {
        VhoClipboard()->SetComponents(list, true);
        const QMimeData *data = QGuiApplication::clipboard()->mimeData();
        write("clipboard", name + QStringLiteral(".qor"), data->data(CF_QorComponents()));
        write("designertext", name + QStringLiteral(".ui"), data->text().toUtf8());
    }
    // designer-copy.ui and designer-form.ui, beside these in the corpus,
    // are texts Qt Designer wrote (a copy and a form file), as the
    // clipboard's and the Designer exchange's tests use them, with a few
    // more value elements; they are kept as files, not made here.

    // Dictionaries with the rows the target looks up.
    const QList<QStringList> rows{
        {QStringLiteral("CLASSVALUE"), QStringLiteral("QPushButton"), QStringLiteral("QPushButton"), QStringLiteral("按钮")},
        {QStringLiteral("PROPNAME"), QStringLiteral("QRect"), QStringLiteral("geometry"), QStringLiteral("几何")},
        {QStringLiteral("EVENT"), QString(), QStringLiteral("clicked"), QStringLiteral("单击")},
        {QStringLiteral("ENUM"), QStringLiteral("Qt::AlignmentFlag"), QStringLiteral("AlignLeft"), QStringLiteral("左对齐")},
        {QStringLiteral("ENUM"), QStringLiteral("Qt::AlignmentFlag"), QStringLiteral("AlignTop"), QStringLiteral("顶端对齐")},
        {QStringLiteral("ENUM"), QStringLiteral("Qt::TextFormat"), QStringLiteral("RichText"), QStringLiteral("富文本")},
    };
    writeDictionary(QStringLiteral("indexed.sqlite"), rows, true);
    writeDictionary(QStringLiteral("plain.sqlite"), rows.mid(0, 3), false);
    writeDictionary(QStringLiteral("empty.sqlite"), {}, true);
    return 0;
}
