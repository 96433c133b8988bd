// Access files protected in Access: a database password, and an encoded file (its pages
// scrambled with RC4). Both are made here from copies of the samples the way Access keeps them:
// most of the first page lies under a fixed RC4 mask; under it, the password at 0x42 (Jet 4:
// two-byte characters, every other one masked once more with a value from the creation date)
// and at 0x3e the key that, combined with a page's number, scrambles each page after the first.
// The reading library reads both kinds; the summary says what the protection means.
#include "ImportFixture.h"

#include "JetHeader.h"
#include "support/SharedTestData.h"

#include <QFile>
#include <QtEndian>

#include <gtest/gtest.h>

namespace {
// RC4, written out here so that the files are made without the import's own code.
QByteArray rc4(const QByteArray &key, QByteArray bytes)
{
    unsigned char s[256];
    for (int i = 0; i < 256; ++i)
        s[i] = static_cast<unsigned char>(i);
    int j = 0;
    for (int i = 0; i < 256; ++i) {
        j = (j + s[i] + static_cast<unsigned char>(key[i % key.size()])) % 256;
        std::swap(s[i], s[j]);
    }
    int a = 0;
    j = 0;
    for (char &c : bytes) {
        a = (a + 1) % 256;
        j = (j + s[a]) % 256;
        std::swap(s[a], s[j]);
        c = static_cast<char>(static_cast<unsigned char>(c) ^ s[(s[a] + s[j]) % 256]);
    }
    return bytes;
}

const QByteArray headerKey("\xc7\xda\x39\x6b", 4);

QByteArray sampleBytes(const char *name)
{
    QFile f(SharedTestData::find(QStringLiteral("access/") + QLatin1String(name)));
    if (!f.open(QIODevice::ReadOnly))
        return {};
    return f.readAll();
}

// Changes the first page's masked part: unmask, change, mask again.
template <typename Change> void changeHeader(QByteArray &file, Change change)
{
    QByteArray plain = rc4(headerKey, file.mid(0x18, 0x80));
    change(plain); // offsets in `plain` are the file's minus 0x18
    file.replace(0x18, 0x80, rc4(headerKey, plain));
}

// The password as Access stores it: on top of the mask already there for the empty one.
QByteArray withPassword(QByteArray file, const QString &password)
{
    const bool jet4 = file[0x14] != 0;
    changeHeader(file, [&](QByteArray &plain) {
        for (qsizetype i = 0; i < password.size(); ++i) {
            const quint16 c = password.at(i).unicode();
            if (jet4) {
                const qsizetype at = 0x42 - 0x18 + 2 * i;
                qToLittleEndian<quint16>(qFromLittleEndian<quint16>(plain.constData() + at) ^ c,
                                         plain.data() + at);
            } else {
                plain[0x42 - 0x18 + i] = char(plain[0x42 - 0x18 + i] ^ char(c));
            }
        }
    });
    return file;
}

// Every page after the first scrambled with RC4 under the key combined with its number.
QByteArray encoded(QByteArray file, quint32 key)
{
    const qsizetype page = file[0x14] != 0 ? 4096 : 2048;
    changeHeader(file, [&](QByteArray &plain) {
        qToLittleEndian<quint32>(key, plain.data() + 0x3e - 0x18);
    });
    for (qsizetype n = 1; n < file.size() / page; ++n) {
        char pageKey[4];
        qToLittleEndian<quint32>(key ^ quint32(n), pageKey);
        file.replace(n * page, page, rc4(QByteArray(pageKey, 4), file.mid(n * page, page)));
    }
    return file;
}

class ProtectedFiles : public ::testing::Test {
protected:
    // Imports the bytes as the only file of the source folder.
    void importAs(const QString &name, const QByteArray &bytes)
    {
        ASSERT_FALSE(bytes.isEmpty()) << "the shared Access samples are missing";
        fixture.writeSource(name, bytes);
        ASSERT_EQ(fixture.run(), QString());
        ASSERT_EQ(fixture.summary().files.size(), 1u);
    }
    QString warnings() const { return fixture.summary().files.at(0).warnings.join("|"); }
    ImportFixture fixture;
};
} // namespace

TEST_F(ProtectedFiles, AJetFourFileWithAPasswordIsImportedWholeAndTheSummarySaysSo)
{
    importAs("dates.mdb", withPassword(sampleBytes("DateTestDatabase.mdb"), "Secret7"));
    EXPECT_EQ(fixture.scalar("dates.mdb", "select count(*) from DateTest").toInt(), 6);
    EXPECT_EQ(
        fixture.scalar("dates.mdb", "select ShortTextCol from DateTest where IDCol = 2").toString(),
        "Year 1999");
    EXPECT_TRUE(warnings().contains("the file has a database password in Access"))
        << warnings().toStdString();
    EXPECT_TRUE(fixture.summary().text().contains("  warning: the file has a database password"));
}

TEST_F(ProtectedFiles, AJetThreeFileWithAPasswordIsImportedWhole)
{
    importAs("nwind.mdb", withPassword(sampleBytes("nwind.mdb"), "x"));
    EXPECT_EQ(fixture.scalar("nwind.mdb", "select count(*) from Orders").toInt(), 830);
    EXPECT_TRUE(warnings().contains("database password")) << warnings().toStdString();
}

TEST_F(ProtectedFiles, AnEncodedJetFourFileIsDecodedAndImportedWhole)
{
    importAs("dates.mdb", encoded(sampleBytes("DateTestDatabase.mdb"), 0x5eed1234));
    EXPECT_EQ(fixture.scalar("dates.mdb", "select count(*) from DateTest").toInt(), 6);
    EXPECT_EQ(
        fixture.scalar("dates.mdb", "select ShortTextCol from DateTest where IDCol = 2").toString(),
        "Year 1999");
    EXPECT_EQ(warnings(), "the file is encoded (Encode Database in Access); it was decoded for "
                          "the import");
}

TEST_F(ProtectedFiles, AnEncodedJetThreeFileIsDecodedAndImportedWhole)
{
    importAs("nwind.mdb", encoded(sampleBytes("nwind.mdb"), 0x00000001));
    EXPECT_EQ(fixture.scalar("nwind.mdb", "select count(*) from \"Order Details\"").toInt(), 2155);
    EXPECT_EQ(
        fixture.scalar("nwind.mdb", "select printf('%.4f', sum(Freight)) from Orders").toString(),
        "64942.6900");
    EXPECT_TRUE(warnings().contains("encoded")) << warnings().toStdString();
}

TEST_F(ProtectedFiles, AnUnprotectedFileGetsNoSuchWarning)
{
    importAs("dates.mdb", sampleBytes("DateTestDatabase.mdb"));
    EXPECT_EQ(warnings(), "");
}

TEST(JetHeaderProtection, APasswordOfOneCharacterIsSeenInEitherVersion)
{
    for (const char *name : {"DateTestDatabase.mdb", "nwind.mdb"}) {
        const QByteArray plain = sampleBytes(name);
        ASSERT_FALSE(plain.isEmpty()) << "the shared Access samples are missing";
        EXPECT_FALSE(JetHeader::protectionOf(plain)->password) << name;
        EXPECT_TRUE(JetHeader::protectionOf(withPassword(plain, "a"))->password) << name;
        EXPECT_TRUE(JetHeader::protectionOf(withPassword(plain, "ab"))->password) << name;
        EXPECT_FALSE(JetHeader::protectionOf(plain)->encoded) << name;
    }
}

TEST(JetHeaderProtection, APasswordOfTwentyCharactersIsSeen)
{
    const QByteArray plain = sampleBytes("DateTestDatabase.mdb");
    ASSERT_FALSE(plain.isEmpty()) << "the shared Access samples are missing";
    EXPECT_TRUE(JetHeader::protectionOf(withPassword(plain, "abcdefghijklmnopqrst"))->password);
}

TEST(JetHeaderProtection, AHeaderTooShortIsNotJudged)
{
    const QByteArray plain = sampleBytes("DateTestDatabase.mdb");
    ASSERT_FALSE(plain.isEmpty()) << "the shared Access samples are missing";
    EXPECT_FALSE(JetHeader::protectionOf(plain.left(JetHeader::headerSize - 1)).has_value());
    EXPECT_TRUE(JetHeader::protectionOf(plain.left(JetHeader::headerSize)).has_value());
}
