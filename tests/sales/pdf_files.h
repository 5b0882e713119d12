// Reading printed PDF files back in tests: their pages and their text as
// fixed-pitch columns (poppler-utils), and the files the cups-pdf virtual
// printer writes.
#pragma once
#include "runtime/vb.h"
#include "sales/print_layout.h"
#include <QDateTime>
#include <QDir>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QStringList>
#include <QThread>
#include <gtest/gtest.h>

namespace vel::testing::pdf {

struct Ran {
    int exitCode = -1;
    QString out, err;
};

inline Ran run(const QString& program, const QStringList& args, int timeoutMs = 60000) {
    QProcess p;
    p.start(program, args);
    Ran r;
    if (!p.waitForStarted(10000)) {
        r.err = program + " did not start";
        return r;
    }
    p.waitForFinished(timeoutMs);
    r.exitCode = p.exitStatus() == QProcess::NormalExit ? p.exitCode() : -1;
    r.out = QString::fromUtf8(p.readAllStandardOutput());
    r.err = QString::fromUtf8(p.readAllStandardError());
    return r;
}

// The factor a page was drawn at: a page composed wider than the printable
// area is drawn smaller as a whole ("fit to page"). Measured on the first rule
// of underscores, whose characters are 7.2 points wide when drawn at their size;
// 1 when the PDF has no such rule.
inline double drawnScale(const QString& file) {
    const Ran r = run("pdftotext", {"-bbox", "-f", "1", "-l", "1", file, "-"});
    static const QRegularExpression word(R"re(<word xMin="([\d.]+)" yMin="[\d.]+" xMax="([\d.]+)" yMax="[\d.]+">(_{40,})</word>)re");
    const auto m = word.match(r.out);
    if (!m.hasMatch()) return 1.0;
    return (m.captured(2).toDouble() - m.captured(1).toDouble()) / (m.captured(3).size() * 7.2);
}

// The text of a PDF read as fixed-pitch text of 7.2 points a character (the
// width of "Courier New" 12) at the scale the page was drawn at, so that
// blanks come back as columns.
inline QStringList lines(const QString& file) {
    const QString pitch = QString::number(7.2 * drawnScale(file), 'f', 4);
    const Ran r = run("pdftotext", {"-layout", "-fixed", pitch, file, "-"});
    EXPECT_EQ(r.exitCode, 0) << qPrintable(r.err);
    return r.out.split('\n');
}

// A value of pdfinfo ("Pages", "Page size", "Title").
inline QString info(const QString& file, const QString& key) {
    const Ran r = run("pdfinfo", {file});
    for (const QString& l : r.out.split('\n'))
        if (l.startsWith(key + ":")) return l.mid(key.size() + 1).trimmed();
    return QString();
}

// Every expected line, in order, among the PDF's lines, the PDF's left border
// taken off (found from the first rule of underscores).
inline void expectInOrder(const QStringList& expected, const QStringList& pdf) {
    int margin = -1;
    for (const QString& l : pdf)
        if (l.contains(print_layout::RayaSubrayado)) {
            margin = int(l.indexOf(print_layout::RayaSubrayado));
            break;
        }
    ASSERT_GE(margin, 0) << "no rule in the PDF";
    int at = 0;
    for (const QString& want : expected) {
        while (at < pdf.size() && vb::RTrim(pdf[at].mid(margin)) != want) ++at;
        ASSERT_LT(at, pdf.size()) << "not in the PDF: \"" << qPrintable(want) << "\"";
        ++at;
    }
}

// Where cups-pdf puts the jobs of this user: its "Out" setting, ${HOME}/PDF
// unless changed.
inline QString cupsPdfFolder() {
    QString out = QStringLiteral("${HOME}/PDF");
    QFile conf("/etc/cups/cups-pdf.conf");
    if (conf.open(QIODevice::ReadOnly))
        for (const QString& l : QString::fromUtf8(conf.readAll()).split('\n'))
            if (l.startsWith("Out ")) out = l.mid(4).trimmed();
    return out.replace("${HOME}", QDir::homePath());
}

// The whole PDF cups-pdf wrote for a job whose name contains stem, waited for
// up to a minute; empty when none came.
inline QString waitForCupsPdf(const QString& stem, const QDateTime& since) {
    const QString folder = cupsPdfFolder();
    QString pdf;
    QElapsedTimer waited;
    waited.start();
    while (pdf.isEmpty() && waited.elapsed() < 60000) {
        QThread::msleep(250);
        QDirIterator it(folder, {"*.pdf"}, QDir::Files);
        while (it.hasNext()) {
            it.next();
            const QFileInfo fi = it.fileInfo();
            if (fi.fileName().contains(stem) && fi.lastModified() >= since) pdf = fi.filePath();
        }
    }
    // cups-pdf writes the file while the job runs: wait until it is whole.
    qint64 size = -1;
    while (!pdf.isEmpty() && QFileInfo(pdf).size() != size && waited.elapsed() < 60000) {
        size = QFileInfo(pdf).size();
        QThread::msleep(500);
    }
    return pdf;
}

} // namespace vel::testing::pdf
