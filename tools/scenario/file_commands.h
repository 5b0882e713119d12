// Scenario commands about the files of the program folder as bytes: their
// checksums, files made straight through the database engine or saved in
// UTF-16 as another program would, and a lock held on a file by another
// connection. They serve the scenarios of files the program must refuse or
// read without changing them.
//
//   checksum NAME            remembers the file's SHA-256
//   expect-checksum NAME     the file's bytes are still those remembered
//   expect-checksum NAME HEX the file's SHA-256 is HEX
//   files FOLDER             prints the files of a folder with their sizes
//   expect-exists NAME       a file matches NAME (wildcards * and ? allowed)
//   expect-absent NAME       no file matches NAME
//   expect-files FOLDER "a|b" the folder holds exactly these files
//   expect-text NAME "text"  the file's text holds this text (read as UTF-8,
//                            or as Windows-1252 when it is not UTF-8)
//   engine-sql NAME "SQL"    runs statements on NAME straight through the
//                            database engine (making the file if needed)
//   recode NAME utf16le|utf16be   rewrites a text file as UTF-16 with its mark
//   lock NAME [MS]           another connection holds NAME locked (for MS
//                            milliseconds, or until unlock)
//   unlock NAME              lets go of that lock
#pragma once
#include <QMap>
#include <QString>
#include <QStringList>
#include <memory>

namespace vel::scenario {

class FileCommands {
public:
    explicit FileCommands(QString folder);
    ~FileCommands();
    FileCommands(const FileCommands&) = delete;
    FileCommands& operator=(const FileCommands&) = delete;

    // What a command came to.
    enum Outcome { NotMine, Done, Failed, Error };
    // Carries out the command in `words` when it is one of these; what it
    // prints goes to *out, and the reason of a failure or error to *why.
    Outcome run(const QStringList& words, QString* out, QString* why);

private:
    QString path(const QString& name) const;
    QStringList matching(const QString& pattern) const;
    QStringList filesIn(const QString& folder) const;
    QString folder_;
    QMap<QString, QByteArray> remembered_;
    struct Lock;
    QMap<QString, std::shared_ptr<Lock>> locks_;
};

} // namespace vel::scenario
