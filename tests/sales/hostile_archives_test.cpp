// Received files that must not be read. The exchange file comes by e-mail
// from outside the program: each hostile or damaged pedido.jpg below is
// refused by Recibir with a message that names the reason, nothing is written
// outside recibir/, and the database file is unchanged to the byte.
#include "sales/formcontrolalbaran.h"
#include "sales/note_exchange.h"
#include "note_fixture.h"

#include <QCryptographicHash>
#include <QDirIterator>
#include <QPushButton>
#include <QRadioButton>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <zip.h>

namespace {

using vel::intercambio::ComprimirZip;

// A member as a hostile packer may write it.
struct Miembro {
    QString nombre;
    QByteArray datos;
    bool enlace = false;   // a Unix symbolic link
    bool cifrado = false;  // AES-256 with a password
    bool guardado = false; // stored, not compressed
};

QByteArray Zip(const std::vector<Miembro>& miembros) {
    zip_error_t error;
    zip_error_init(&error);
    zip_source_t* destino = zip_source_buffer_create(nullptr, 0, 0, &error);
    zip_source_keep(destino);
    zip_t* za = zip_open_from_source(destino, ZIP_TRUNCATE, &error);
    for (const Miembro& m : miembros) {
        zip_source_t* s = zip_source_buffer(za, m.datos.constData(), static_cast<zip_uint64_t>(m.datos.size()), 0);
        const zip_int64_t i = zip_file_add(za, m.nombre.toUtf8().constData(), s, ZIP_FL_ENC_UTF_8);
        EXPECT_GE(i, 0) << m.nombre.toStdString();
        const auto idx = static_cast<zip_uint64_t>(i);
        zip_set_file_compression(za, idx, m.guardado ? ZIP_CM_STORE : ZIP_CM_DEFLATE, 1);
        if (m.enlace) zip_file_set_external_attributes(za, idx, 0, ZIP_OPSYS_UNIX, (S_IFLNK | 0777u) << 16);
        if (m.cifrado) {
            EXPECT_EQ(zip_file_set_encryption(za, idx, ZIP_EM_AES_256, "clave"), 0);
        }
    }
    EXPECT_EQ(zip_close(za), 0);
    zip_stat_t st;
    zip_source_stat(destino, &st);
    QByteArray salida(static_cast<qsizetype>(st.size), '\0');
    zip_source_open(destino);
    zip_source_read(destino, salida.data(), st.size);
    zip_source_close(destino);
    zip_source_free(destino);
    return salida;
}

const QByteArray kTextoC = "";
const QByteArray kTextoD = "";

QByteArray ZipC() { return ComprimirZip({{QStringLiteral("pedidoC.txt"), kTextoC}}); }
QByteArray ZipD() { return ComprimirZip({{QStringLiteral("pedidoD.txt"), kTextoD}}); }
// A sound pedido.jpg, with no notes.
QByteArray Sano() { return ComprimirZip({{QStringLiteral("pedidoC.zip"), ZipC()}, {QStringLiteral("pedidoD.zip"), ZipD()}}); }

QByteArray Sha(const QString& ruta) {
    QFile f(ruta);
    f.open(QIODevice::ReadOnly);
    return QCryptographicHash::hash(f.readAll(), QCryptographicHash::Sha256).toHex();
}

// Every file under a folder but those in recibir/, with its checksum.
QStringList Fuera(const QString& carpeta) {
    QStringList r;
    QDirIterator it(carpeta, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                    QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString f = it.next();
        const QString rel = QDir(carpeta).relativeFilePath(f);
        // The engine's shared-memory index changes with every read.
        if (rel.contains(QLatin1String("recibir/")) || rel.endsWith(QLatin1String("-shm"))) continue;
        r << rel + (QFileInfo(f).isFile() ? ":" + Sha(f) : QByteArray());
    }
    r.sort();
    return r;
}

class HostileArchive : public ::testing::Test {
protected:
    veltest::Cajas cajas;
    bool ended = false;
    // The program folder lies inside a parent, so that an escape upwards shows.
    QTemporaryDir padre;
    std::unique_ptr<veltest::Tienda> central;
    void SetUp() override {
        vb::SetMessageBoxService(&cajas);
        vb::ResetEnded();
        vb::SetEndHandler([this] { ended = true; });
        central = std::make_unique<veltest::Tienda>(1, padre.path());
        central->Usar();
        central->db->Execute(veltest::NotaCabecera(1, 2026, 1, QStringLiteral("E")));
        QDir().mkpath(central->Ruta(QStringLiteral("recibir")));
    }
    void TearDown() override {
        central.reset();
        vb::SetMessageBoxService(nullptr);
        vb::SetEndHandler(nullptr);
        vb::ResetEnded();
    }

    // Recibir on this pedido.jpg (none when empty): the message shown.
    QString Recibir(const std::optional<QByteArray>& pedido) {
        const QString ruta = central->Ruta(QStringLiteral("recibir/pedido.jpg"));
        QFile::remove(ruta);
        if (pedido) {
            QFile f(ruta);
            f.open(QIODevice::WriteOnly);
            f.write(*pedido);
        }
        const QString base = central->Ruta(QStringLiteral("datos.mdb"));
        const QByteArray antes = Sha(base);
        const QStringList fueraAntes = Fuera(padre.path());
        auto w = std::make_unique<vel::FormControlAlbaran>();
        w->show();
        w->Load();
        veltest::Asentar();
        w->findChild<QRadioButton*>(QStringLiteral("OptionEnviados"))->click();
        cajas.shown.clear();
        w->findChild<QPushButton*>(QStringLiteral("CommandRecibir"))->click();
        veltest::Asentar();
        w.reset();
        EXPECT_FALSE(ended);
        EXPECT_EQ(Sha(base), antes) << "the database changed";
        EXPECT_EQ(Fuera(padre.path()), fueraAntes) << "a file was written outside recibir/";
        EXPECT_EQ(veltest::Filas(*central->db, QStringLiteral("SELECT numero_cabecera_albaran_venta FROM cabecera_albaran_venta"),
                                 {QStringLiteral("numero_cabecera_albaran_venta")}),
                  QStringList{"1"});
        // The question before receiving, then the refusal.
        if (cajas.shown.size() != 2) return QStringLiteral("<%1 boxes>").arg(cajas.shown.size());
        EXPECT_TRUE(cajas.shown[1].startsWith(QStringLiteral("Recibir Albaranes|No se pueden recibir los albaranes: ")));
        EXPECT_TRUE(cajas.shown[1].endsWith(QStringLiteral("|48")));
        return cajas.shown[1].section('|', 1, 1).mid(QStringLiteral("No se pueden recibir los albaranes: ").size());
    }
};

TEST_F(HostileArchive, SoundEmptyFileIsReceived) {
    // The control case: an exchange with no notes goes through.
    QFile f(central->Ruta(QStringLiteral("recibir/pedido.jpg")));
    f.open(QIODevice::WriteOnly);
    f.write(Sano());
    f.close();
    auto w = std::make_unique<vel::FormControlAlbaran>();
    w->show();
    w->Load();
    w->findChild<QRadioButton*>(QStringLiteral("OptionEnviados"))->click();
    cajas.shown.clear();
    w->findChild<QPushButton*>(QStringLiteral("CommandRecibir"))->click();
    EXPECT_EQ(cajas.shown.size(), 1);
    EXPECT_TRUE(QFile::exists(central->Ruta(QStringLiteral("recibir/pedidoC.txt"))));
}

TEST_F(HostileArchive, MissingFile) {
    EXPECT_EQ(Recibir(std::nullopt), QStringLiteral("no se encuentra el fichero pedido.jpg en la carpeta recibir."));
}

TEST_F(HostileArchive, DotDotName) {
    EXPECT_EQ(Recibir(Zip({{"../pedidoC.zip", ZipC()}, {"pedidoD.zip", ZipD()}})),
              QStringLiteral("el fichero pedido.jpg contiene un nombre con \"..\": ../pedidoC.zip"));
}

TEST_F(HostileArchive, DotDotNameInsideInner) {
    const QByteArray c = Zip({{"../../pedidoC.txt", kTextoC}});
    EXPECT_EQ(Recibir(Zip({{"pedidoC.zip", c}, {"pedidoD.zip", ZipD()}})),
              QStringLiteral("el fichero pedidoC.zip contiene un nombre con \"..\": ../../pedidoC.txt"));
}

TEST_F(HostileArchive, AbsolutePath) {
    EXPECT_EQ(Recibir(Zip({{"/tmp/pedidoC.zip", ZipC()}, {"pedidoD.zip", ZipD()}})),
              QStringLiteral("el fichero pedido.jpg contiene un nombre con ruta absoluta: /tmp/pedidoC.zip"));
    EXPECT_EQ(Recibir(Zip({{"\\pedidoC.zip", ZipC()}, {"pedidoD.zip", ZipD()}})),
              QStringLiteral("el fichero pedido.jpg contiene un nombre con ruta absoluta: \\pedidoC.zip"));
}

TEST_F(HostileArchive, DriveLetter) {
    EXPECT_EQ(Recibir(Zip({{"C:pedidoC.zip", ZipC()}, {"pedidoD.zip", ZipD()}})),
              QStringLiteral("el fichero pedido.jpg contiene un nombre con letra de unidad: C:pedidoC.zip"));
}

TEST_F(HostileArchive, SymbolicLink) {
    Miembro enlace{"pedidoC.zip", "/etc/passwd"};
    enlace.enlace = true;
    EXPECT_EQ(Recibir(Zip({enlace, {"pedidoD.zip", ZipD()}})),
              QStringLiteral("el fichero pedido.jpg contiene un enlace simbólico: pedidoC.zip"));
}

TEST_F(HostileArchive, UnexpectedMember) {
    EXPECT_EQ(Recibir(Zip({{"pedidoC.zip", ZipC()}, {"pedidoD.zip", ZipD()}, {"leeme.exe", "MZ"}})),
              QStringLiteral("el fichero pedido.jpg contiene un fichero no esperado: leeme.exe"));
    EXPECT_EQ(Recibir(Zip({{"pedidoC.zip", Zip({{"pedidoC.txt", ""}, {"otro.txt", "x"}})}, {"pedidoD.zip", ZipD()}})),
              QStringLiteral("el fichero pedidoC.zip contiene un fichero no esperado: otro.txt"));
}

TEST_F(HostileArchive, MemberMissing) {
    EXPECT_EQ(Recibir(Zip({{"pedidoC.zip", ZipC()}})), QStringLiteral("al fichero pedido.jpg le falta el fichero pedidoD.zip."));
}

TEST_F(HostileArchive, EncryptedMember) {
    Miembro cifrado{"pedidoD.zip", ZipD()};
    cifrado.cifrado = true;
    EXPECT_EQ(Recibir(Zip({{"pedidoC.zip", ZipC()}, cifrado})),
              QStringLiteral("el fichero pedido.jpg contiene un fichero cifrado: pedidoD.zip"));
}

TEST_F(HostileArchive, MemberOver64MB) {
    const QByteArray grande(vel::intercambio::kTamanoMaximo + 1, 'A');
    // The inner archive is stored in the outer one, so that the outer's own
    // ratio (a packed archive packs very well again) does not refuse it first.
    Miembro c{"pedidoC.zip", Zip({{"pedidoC.txt", grande}})};
    c.guardado = true;
    EXPECT_EQ(Recibir(Zip({c, {"pedidoD.zip", ZipD()}})),
              QStringLiteral("el fichero pedidoC.txt de pedidoC.zip ocupa más de 64 MB."));
}

TEST_F(HostileArchive, CompressionBomb) {
    const QByteArray ceros(4 * 1024 * 1024, '\0');
    const QByteArray c = Zip({{"pedidoC.txt", ceros}});
    EXPECT_EQ(Recibir(Zip({{"pedidoC.zip", c}, {"pedidoD.zip", ZipD()}})),
              QStringLiteral("el fichero pedidoC.txt de pedidoC.zip está comprimido más de 100 veces (posible bomba de compresión)."));
}

TEST_F(HostileArchive, TruncatedArchive) {
    const QByteArray sano = Sano();
    EXPECT_EQ(Recibir(sano.left(sano.size() / 2)), QStringLiteral("el fichero pedido.jpg está dañado o incompleto."));
    EXPECT_EQ(Recibir(sano.left(sano.size() - 1)), QStringLiteral("el fichero pedido.jpg está dañado o incompleto."));
}

TEST_F(HostileArchive, CorruptMemberData) {
    // The inner archive stored as it is, and one byte of it changed: its checksum no longer matches.
    Miembro c{"pedidoC.zip", ZipC()};
    c.guardado = true;
    QByteArray danado = Zip({c, {"pedidoD.zip", ZipD()}});
    const qsizetype at = danado.indexOf("pedidoC.txt");
    ASSERT_GT(at, 0);
    danado[at] = 'X';
    const QString m = Recibir(danado);
    EXPECT_TRUE(m.contains(QStringLiteral("está dañado o incompleto."))) << m.toStdString();
}

TEST_F(HostileArchive, NotAnArchiveAtAll) {
    EXPECT_EQ(Recibir(QByteArray("\xFF\xD8\xFF\xE0 a real picture", 20)),
              QStringLiteral("el fichero pedido.jpg está dañado o incompleto."));
    EXPECT_EQ(Recibir(QByteArray()), QStringLiteral("el fichero pedido.jpg está dañado o incompleto."));
}

// A text cut inside a note is refused before anything is written.
TEST_F(HostileArchive, TextCutInsideANote) {
    const QByteArray c = ComprimirZip({{QStringLiteral("pedidoC.txt"), QByteArray("2\r\nAV\r\n2026\r\n")}});
    EXPECT_EQ(Recibir(ComprimirZip({{QStringLiteral("pedidoC.zip"), c}, {QStringLiteral("pedidoD.zip"), ZipD()}})),
              QStringLiteral("los ficheros recibidos terminan a mitad de un albarán."));
}

// A line's store code too large for any number: refused, before anything is
// written, with the field that held it.
TEST_F(HostileArchive, ANumberBeyondRangeInANote) {
    QByteArray texto = "4444444444444e4444444444\r\n";
    for (int i = 1; i < 25; ++i) texto += "1\r\n";
    const QByteArray d = ComprimirZip({{QStringLiteral("pedidoD.txt"), texto}});
    const QString m = Recibir(ComprimirZip({{QStringLiteral("pedidoC.zip"), ZipC()}, {QStringLiteral("pedidoD.zip"), d}}));
    EXPECT_TRUE(m.startsWith(QStringLiteral("los ficheros recibidos tienen un valor que no se puede leer ("))) << m.toStdString();
    EXPECT_TRUE(m.contains(QStringLiteral("tienda_detalle_albaran_venta"))) << m.toStdString();
}

} // namespace
