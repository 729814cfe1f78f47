// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/Product.h"
#include "platform/Handle.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QHash>
#include <QSet>
#include <QTest>
#include <QXmlStreamReader>

#include <windows.h>

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
    const QFileInfo file(QCoreApplication::applicationDirPath() +
                         QStringLiteral("/../../app/FernlightLarkspur.exe"));
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
    QHash<QString, QString> texts;
    QStringList systems;
    QString level;
    bool commonControls = false;
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        const QString name = xml.name().toString();
        const QXmlStreamAttributes attributes = xml.attributes();
        if (name == u"supportedOS")
            systems.append(attributes.value(QLatin1StringView("Id")).toString());
        else if (name == u"requestedExecutionLevel")
            level = attributes.value(QLatin1StringView("level")).toString();
        else if (name == u"assemblyIdentity" &&
                 attributes.value(QLatin1StringView("name")) == u"Microsoft.Windows.Common-Controls")
            commonControls = attributes.value(QLatin1StringView("version")) == u"6.0.0.0";
        else if (name == u"dpiAwareness" || name == u"longPathAware" || name == u"activeCodePage")
            texts.insert(name, xml.readElementText());
    }
    QVERIFY2(!xml.hasError(), qPrintable(xml.errorString()));
    QVERIFY(texts[QStringLiteral("dpiAwareness")].startsWith(u"PerMonitorV2"));
    QCOMPARE(texts[QStringLiteral("longPathAware")], QStringLiteral("true"));
    QCOMPARE(texts[QStringLiteral("activeCodePage")], QStringLiteral("UTF-8"));
    QCOMPARE(level, QStringLiteral("asInvoker"));
    QVERIFY(commonControls);
    QVERIFY(systems.contains(QStringLiteral("{8e0f7a12-bfb3-4fe8-b9a5-48fd50a15a9a}"))); // Windows 10 and 11
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

    const QString version = product::version().toString();
    for (const auto &[name, expected] :
         {std::pair{L"ProductName", QStringLiteral("Fernlight Larkspur")}, {L"ProductVersion", version}}) {
        const std::wstring path = std::wstring(L"\\StringFileInfo\\040904b0\\") + name;
        QVERIFY2(VerQueryValueW(block.constData(), path.c_str(), &value, &length),
                 qPrintable(QString::fromWCharArray(name)));
        QCOMPARE(QString::fromWCharArray(static_cast<const wchar_t *>(value)), expected);
    }
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
