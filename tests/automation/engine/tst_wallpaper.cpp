// SPDX-License-Identifier: GPL-3.0-or-later
#include "automation/engine/Wallpaper.h"

#include <QTest>
#include <QTimeZone>

#include <functional>
#include <map>

using namespace Qt::StringLiterals;
using namespace automation;
using Result = WallpaperAnswer::Result;

namespace
{

// An agent over days: asks the rule when the rule wants to be asked, and answers for the process with what
// the state of the network gives. Sleeps, is killed, and is told of changes by the words of a script.
class Days
{
public:
    explicit Days(const WallpaperSettings &settings) : m_settings(settings) {}

    void run(const QDateTime &until, const QString &word)
    {
        while (m_awake && m_wake >= 0 && m_now.isValid() && m_now.addMSecs(m_wake) < until) {
            pass(m_wake);
            take(EventKind::Due);
        }
        if (m_now.isValid()) {
            const qint64 gap = m_now.msecsTo(until);
            if (m_wake >= 0)
                m_wake = std::max<qint64>(m_wake - gap, 0);
            m_ticks += std::max<qint64>(gap, 0);
        }
        m_now = until;
        act(word);
    }

    QStringList story;
    int starts = 0;

private:
    void pass(qint64 milliseconds)
    {
        m_now = m_now.addMSecs(milliseconds);
        m_ticks += milliseconds;
        ++m_wakes;
    }

    void act(const QString &word)
    {
        static const std::map<QString, Result> results{{u"online"_s, Result::Changed},
                                                       {u"offline"_s, Result::Failed},
                                                       {u"metered"_s, Result::Metered},
                                                       {u"nothing new"_s, Result::Same}};
        static const std::map<QString, std::function<void(Days &)>> words{
            {u"on"_s, [](Days &days) { days.take(EventKind::Reload); }},
            {u"sleep"_s, [](Days &days) { days.m_awake = false; }},
            {u"resume"_s,
             [](Days &days) {
                 days.m_awake = true;
                 days.take(EventKind::Resume);
             }},
            {u"kill"_s,
             [](Days &days) {
                 days.m_rule = Wallpaper(days.m_noted.toUTC());
                 days.take(EventKind::Reload);
             }},
            {u"clock"_s, [](Days &days) { days.take(EventKind::ClockChange); }},
            {u"next"_s, [](Days &days) { days.take(EventKind::Asked, 1); }},
            {u"keep"_s, [](Days &days) { days.set(&WallpaperSettings::keep, true); }},
            {u"unkeep"_s, [](Days &days) { days.set(&WallpaperSettings::keep, false); }},
            {u"off"_s, [](Days &days) { days.set(&WallpaperSettings::enabled, false); }},
            {u"nasa"_s, [](Days &days) { days.set(&WallpaperSettings::source, ImageSource::Nasa); }},
            {u"at nine"_s,
             [](Days &days) { days.set(&WallpaperSettings::daily, std::optional(QTime(9, 0))); }},
            {u"remote"_s,
             [](Days &days) {
                 days.m_remote = true;
                 days.take(EventKind::Session);
             }},
            {u"local"_s,
             [](Days &days) {
                 days.m_remote = false;
                 days.take(EventKind::Session);
             }},
            {u"hang"_s, [](Days &days) { days.m_hangs = true; }},
        };
        if (const auto result = results.find(word); result != results.end()) {
            m_result = result->second;
            m_hangs = false;
        } else {
            words.at(word)(*this);
        }
    }

    template <class Value>
    void set(Value WallpaperSettings::*what, const Value &value)
    {
        m_settings.*what = value;
        take(EventKind::Reload);
    }

    void take(EventKind kind, int value = 0)
    {
        note(m_rule.take({kind, m_now, m_ticks, value}, m_settings, {m_remote, u"It"_s}));
    }

    void note(const WallpaperDecision &decision)
    {
        m_wake = decision.wakeAfter;
        m_noted = decision.handled;
        if (!decision.why.isEmpty())
            story.append(m_now.toString(u"dd HH:mm "_s) + decision.subject + u": "_s + decision.why);
        if (decision.restore)
            story.append(m_now.toString(u"dd HH:mm "_s) + u"restored"_s);
        if (decision.endProcess)
            story.append(m_now.toString(u"dd HH:mm "_s) + u"process ended"_s);
        if (!decision.start || m_hangs)
            return;
        ++starts;
        pass(3000);
        WallpaperAnswer answer{.result = m_result};
        if (m_result == Result::Failed)
            answer.reason = u"Offline"_s;
        if (m_result == Result::Metered)
            answer.reason = u"Metered"_s;
        static const char *const steps[]{"current", "newest", "next", "previous"};
        answer.pictures = {{.title = QString::fromLatin1(steps[static_cast<int>(decision.start->step)])}};
        note(
            m_rule.ended({EventKind::ProgramEnded, m_now, m_ticks}, m_settings, {m_remote, u"It"_s}, answer));
    }

    WallpaperSettings m_settings;
    Wallpaper m_rule;
    QDateTime m_now, m_noted;
    qint64 m_ticks = 1000, m_wake = -1;
    bool m_awake = true, m_remote = false, m_hangs = false;
    Result m_result = Result::Changed;
    int m_wakes = 0;
};

const WallpaperSettings daily{.enabled = true, .daily = QTime(7, 0)};
const WallpaperSettings hourly{.enabled = true};
const WallpaperSettings own{.enabled = true, .source = ImageSource::Own, .ownCount = 3};

} // namespace

class WallpaperTest : public QObject
{
    Q_OBJECT

private slots:
    void replay_data();
    void replay();
    void countsStarts_data();
    void countsStarts();
    void whichPicture_data();
    void whichPicture();
    void jobFiles();
};

void WallpaperTest::replay_data()
{
    QTest::addColumn<WallpaperSettings>("settings");
    QTest::addColumn<int>("month");
    QTest::addColumn<QStringList>("script");
    QTest::addColumn<QStringList>("story");

    QTest::newRow("a day, and a night of sleep")
        << daily << 3
        << QStringList{u"10 12:00 on"_s, u"10 23:00 sleep"_s, u"12 09:00 resume"_s, u"13 08:00 off"_s}
        << QStringList{u"10 12:00 Changed: \"newest\", you chose so"_s,
                       u"12 09:00 Changed: \"newest\", your hour 07:00"_s,
                       u"13 07:00 Changed: \"newest\", your hour 07:00"_s, u"13 08:00 restored"_s};
    QTest::newRow("offline: fewer and fewer tries, one line each, and at once after sleep")
        << daily << 3 << QStringList{u"10 12:00 on"_s,     u"10 13:00 offline"_s, u"11 08:00 sleep"_s,
                                     u"11 08:10 online"_s, u"11 08:11 resume"_s,  u"11 09:00 sleep"_s}
        << QStringList{u"10 12:00 Changed: \"newest\", you chose so"_s,
                       u"11 07:00 Kept: Offline; again in 1 min"_s,
                       u"11 08:11 Changed: \"newest\", your hour 07:00"_s};
    QTest::newRow("metered: an hour later")
        << daily << 3
        << QStringList{u"10 06:30 on"_s, u"10 06:40 metered"_s, u"10 07:30 online"_s, u"10 09:00 sleep"_s}
        << QStringList{u"10 06:30 Changed: \"newest\", you chose so"_s,
                       u"10 07:00 Kept: Metered; again in an hour"_s,
                       u"10 08:00 Changed: \"newest\", your hour 07:00"_s};
    QTest::newRow("nothing new at the hour")
        << daily << 3
        << QStringList{u"10 06:30 on"_s, u"10 06:40 nothing new"_s, u"10 09:30 online"_s, u"10 12:00 sleep"_s}
        << QStringList{u"10 06:30 Changed: \"newest\", you chose so"_s,
                       u"10 07:00 Kept: Nothing new yet at Bing; asked again each hour"_s,
                       u"10 10:00 Changed: \"newest\", your hour 07:00"_s};
    QTest::newRow("killed: what was done is not done again, what was not is")
        << daily << 3
        << QStringList{u"10 12:00 on"_s,     u"10 13:00 kill"_s, u"11 06:00 offline"_s, u"11 07:30 kill"_s,
                       u"11 07:40 online"_s, u"11 07:41 kill"_s, u"11 08:00 sleep"_s}
        << QStringList{u"10 12:00 Changed: \"newest\", you chose so"_s,
                       u"11 07:00 Kept: Offline; again in 1 min"_s,
                       u"11 07:30 Kept: Offline; again in 1 min"_s,
                       u"11 07:41 Changed: \"newest\", your hour 07:00"_s};
    QTest::newRow("kept, and no longer: nothing is made up for")
        << hourly << 3
        << QStringList{u"10 12:30 on"_s, u"10 12:31 keep"_s, u"10 15:30 next"_s, u"10 16:30 unkeep"_s,
                       u"10 17:30 sleep"_s}
        << QStringList{u"10 12:30 Changed: \"newest\", you chose so"_s,
                       u"10 15:30 Changed: \"next\", you asked for it"_s,
                       u"10 17:00 Changed: \"next\", full hour 17:00"_s};
    QTest::newRow("another source at once, another hour not")
        << daily << 3
        << QStringList{u"10 12:00 on"_s, u"10 13:00 nasa"_s, u"10 14:00 at nine"_s, u"11 12:00 sleep"_s}
        << QStringList{u"10 12:00 Changed: \"newest\", you chose so"_s,
                       u"10 13:00 Changed: \"newest\", you chose so"_s,
                       u"11 09:00 Changed: \"newest\", your hour 09:00"_s};
    QTest::newRow("another source while the one before is asked")
        << daily << 3
        << QStringList{u"10 12:00 hang"_s, u"10 12:01 on"_s, u"10 12:02 online"_s, u"10 12:02 nasa"_s,
                       u"10 13:00 sleep"_s}
        << QStringList{u"10 12:02 process ended"_s, u"10 12:02 Changed: \"newest\", you chose so"_s};
    WallpaperSettings patient = daily;
    patient.waitsRemote = true;
    QTest::newRow("used from another PC")
        << patient << 3
        << QStringList{u"10 06:00 on"_s, u"10 06:30 remote"_s, u"10 09:12 local"_s, u"10 10:00 sleep"_s}
        << QStringList{u"10 06:00 Changed: \"newest\", you chose so"_s,
                       u"10 09:12 Changed: \"newest\", your hour 07:00"_s};
    QTest::newRow("a clock that is put right by a minute, and by hours")
        << daily << 3
        << QStringList{u"10 07:00 on"_s, u"10 06:59 clock"_s, u"10 03:00 clock"_s, u"10 08:00 sleep"_s}
        << QStringList{u"10 07:00 Changed: \"newest\", you chose so"_s,
                       u"10 03:00 Changed: \"newest\", your hour Mon 9 Mar 07:00"_s,
                       u"10 07:00 Changed: \"newest\", your hour 07:00"_s};
    QTest::newRow("an hour that spring leaves out, and one that autumn has twice")
        << WallpaperSettings{.enabled = true, .daily = QTime(2, 0)} << 3
        << QStringList{u"28 12:00 on"_s, u"29 12:00 sleep"_s}
        << QStringList{u"28 12:00 Changed: \"newest\", you chose so"_s,
                       u"29 03:00 Changed: \"newest\", your hour 03:00"_s};
    QTest::newRow("the process hangs")
        << own << 3
        << QStringList{u"10 12:30 hang"_s, u"10 12:31 on"_s, u"10 12:33 online"_s, u"10 12:50 sleep"_s}
        << QStringList{u"10 12:34 Kept: It took too long; again in 1 min"_s, u"10 12:34 process ended"_s,
                       u"10 12:35 Changed: \"current\", you chose so"_s};
}

void WallpaperTest::replay()
{
    QFETCH(const WallpaperSettings, settings);
    QFETCH(const int, month);
    QFETCH(const QStringList, script);
    const QTimeZone berlin("Europe/Berlin");
    Days days(settings);
    for (const QString &line : script) {
        const QDate day(2026, month, line.left(2).toInt());
        days.run(QDateTime(day, QTime::fromString(line.mid(3, 5), u"HH:mm"_s), berlin), line.mid(9));
    }
    QTEST(days.story, "story");
}

// Weeks of it: how often anything is started.
void WallpaperTest::countsStarts_data()
{
    QTest::addColumn<WallpaperSettings>("settings");
    QTest::addColumn<QString>("network");
    QTest::addColumn<int>("starts");
    QTest::newRow("daily") << daily << u"online"_s << 1 + 55;
    // The first hour is the one of 12; the clock goes forward once.
    QTest::newRow("hourly") << hourly << u"online"_s << 55 * 24;
    QTest::newRow("own") << own << u"online"_s << 55 * 24;
    // Three tries soon after the start, then one in an hour and the three seconds that a try takes.
    QTest::newRow("never online") << daily << u"offline"_s << 55 * 24 + 2;
}

void WallpaperTest::countsStarts()
{
    QFETCH(const WallpaperSettings, settings);
    QFETCH(const QString, network);
    const QTimeZone berlin("Europe/Berlin");
    Days days(settings);
    const QDateTime begin(QDate(2026, 3, 1), QTime(12, 0), berlin);
    days.run(begin, network);
    days.run(begin, u"on"_s);
    days.run(begin.addSecs(55 * 24 * 3600 - 600), u"sleep"_s);
    QTEST(days.starts, "starts");
}

void WallpaperTest::whichPicture_data()
{
    QTest::addColumn<ImageStep>("step");
    QTest::addColumn<int>("index");
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("found");
    QTest::addColumn<int>("after");
    using enum ImageStep;
    QTest::newRow("current") << Current << 2 << 5 << 2 << 3;
    QTest::newRow("next") << Next << 2 << 5 << 3 << 4;
    QTest::newRow("next of the last") << Next << 4 << 5 << 0 << 1;
    QTest::newRow("previous") << Previous << 2 << 5 << 1 << 0;
    QTest::newRow("previous of the first") << Previous << 0 << 5 << 4 << 3;
    QTest::newRow("newest") << Newest << 4 << 5 << 0 << 1;
    QTest::newRow("past the end") << Current << 400 << 5 << 0 << 1;
    QTest::newRow("previous from past the end") << Previous << 400 << 5 << 4 << 3;
    QTest::newRow("next from past the end") << Next << 400 << 5 << 0 << 1;
    QTest::newRow("one") << Next << 0 << 1 << 0 << 0;
    QTest::newRow("none") << Next << 3 << 0 << -1 << 0;
}

void WallpaperTest::whichPicture()
{
    QFETCH(const ImageStep, step);
    QFETCH(const int, index);
    QFETCH(const int, count);
    WallpaperRequest request{.step = step, .index = index, .newest = u"old"_s};
    const int found = firstIndex(request, count, u"new"_s);
    QTEST(found, "found");
    if (found >= 0) {
        QTEST(indexAfter(request, found, count), "after");
        request.automatic = true; // what is new goes first, whatever the turn
        QCOMPARE(firstIndex(request, count, u"new"_s), 0);
        QCOMPARE(firstIndex(request, count, u"old"_s), found);
    }
}

void WallpaperTest::jobFiles()
{
    const WallpaperRequest request{.source = ImageSource::Own,
                                   .market = u"de-DE"_s,
                                   .step = ImageStep::Previous,
                                   .automatic = true,
                                   .index = 7,
                                   .newest = u"bing-1"_s,
                                   .own = {u"D:\\ä \"b\".png"_s, u""_s},
                                   .perMonitor = true};
    QCOMPARE(parseRequest(requestText(request)), request);
    WallpaperAnswer answer{.result = Result::Changed,
                           .index = 3,
                           .newest = u"k"_s,
                           .time = QDateTime(QDate(2026, 3, 1), QTime(7, 0), QTimeZone::utc())};
    answer.pictures = {
        {u"k"_s, u"C:\\a.jpg"_s, u"C:\\b.png"_s, u"T"_s, u"C"_s, QUrl(u"https://example.org/x?y=1"_s)}};
    QCOMPARE(parseAnswer(answerText(answer)), answer);
    for (const char *bytes : {"", "[]", "{}", "{\"result\":77}", "{\"result\":0"})
        QVERIFY2(!parseAnswer(bytes), bytes);
    const auto hostile = parseAnswer(
        R"({"result":0,"index":-9,"pictures":[{"page":"file:///C:/x.exe","title":"a\u202eb\nc"},5]})");
    QCOMPARE(hostile->index, 0);
    QCOMPARE(hostile->pictures.size(), 2);
    QVERIFY(hostile->pictures[0].page.isEmpty());
    QCOMPARE(hostile->pictures[0].title, u"ab c"_s);
}

QTEST_APPLESS_MAIN(WallpaperTest)
#include "tst_wallpaper.moc"
