// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/Product.h"
#include "platform/Handle.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QSet>
#include <QTest>
#include <QXmlStreamReader>

#include <windows.h>

using namespace Qt::StringLiterals;

// What Windows reads from the executable itself before a line of it runs.
class tst_Executable : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    void hasItsManifest();
    void hasItsVersion();
    void hasItsIcon();

private:
    QByteArray resource(WORD id, LPCWSTR type) const;

    std::wstring m_path;
    platform::Library m_file;
};

void tst_Executable::initTestCase()
{
    const QFileInfo file(QCoreApplication::applicationDirPath() + u"/../../app/FernlightLarkspur.exe"_s);
    QVERIFY2(file.exists(), qPrintable(file.absoluteFilePath()));
    m_path = file.canonicalFilePath().toStdWString();
    m_file.reset(LoadLibraryExW(m_path.c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE));
    QVERIFY(m_file);
}

QByteArray tst_Executable::resource(WORD id, LPCWSTR type) const
{
    const HRSRC found = FindResourceW(m_file.get(), MAKEINTRESOURCEW(id), type);
    const HGLOBAL loaded = found ? LoadResource(m_file.get(), found) : nullptr;
    if (!loaded)
        return {};
    return {static_cast<const char *>(LockResource(loaded)),
            static_cast<qsizetype>(SizeofResource(m_file.get(), found))};
}

void tst_Executable::hasItsManifest()
{
    constexpr WORD ofTheProcess = 1; // CREATEPROCESS_MANIFEST_RESOURCE_ID
    QXmlStreamReader xml(resource(ofTheProcess, RT_MANIFEST));
    QString element;
    QStringList facts;
    while (!xml.atEnd()) {
        xml.readNext();
        if (xml.isStartElement())
            element = xml.name().toString();
        for (const QXmlStreamAttribute &attribute : xml.attributes())
            facts.append(u"%1 %2"_s.arg(element, attribute.value()));
        if (xml.isCharacters() && !xml.isWhitespace())
            facts.append(u"%1 %2"_s.arg(element, xml.text()));
    }
    QVERIFY2(!xml.hasError(), qPrintable(xml.errorString()));
    for (const QString &fact :
         {u"dpiAwareness PerMonitorV2, PerMonitor"_s, u"longPathAware true"_s, u"activeCodePage UTF-8"_s,
          u"requestedExecutionLevel asInvoker"_s, u"assemblyIdentity Microsoft.Windows.Common-Controls"_s,
          u"assemblyIdentity 6.0.0.0"_s,
          u"supportedOS {8e0f7a12-bfb3-4fe8-b9a5-48fd50a15a9a}"_s}) // Windows 10 and 11
        QVERIFY2(facts.contains(fact), qPrintable(fact));
}

void tst_Executable::hasItsVersion()
{
    const DWORD size = GetFileVersionInfoSizeW(m_path.c_str(), nullptr);
    QVERIFY(size > 0);
    QByteArray block(static_cast<qsizetype>(size), '\0');
    QVERIFY(GetFileVersionInfoW(m_path.c_str(), 0, size, block.data()));
    void *value = nullptr;
    UINT length = 0;
    QVERIFY(VerQueryValueW(block.constData(), L"\\", &value, &length));
    const auto *fixed = static_cast<const VS_FIXEDFILEINFO *>(value);
    const QVersionNumber number(HIWORD(fixed->dwFileVersionMS), LOWORD(fixed->dwFileVersionMS),
                                HIWORD(fixed->dwFileVersionLS));
    QCOMPARE(number, product::version());
}

void tst_Executable::hasItsIcon()
{
    // A directory of 6 bytes, then 14 for each image, the first of them its width, 0 for 256.
    constexpr WORD firstOfAll = 1; // the one that the shell shows
    const QByteArray group = resource(firstOfAll, RT_GROUP_ICON);
    QSet<int> widths;
    for (qsizetype entry = 6; entry < group.size(); entry += 14)
        widths.insert(static_cast<quint8>(group[entry]));
    QVERIFY(widths.contains({16, 32, 48, 0}));
}

QTEST_GUILESS_MAIN(tst_Executable)

#include "tst_executable.moc"
