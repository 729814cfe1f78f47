// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QUrl>
#include <QVersionNumber>

#include <chrono>

class QNetworkAccessManager;
class QNetworkReply;
class QTimer;

// What came out of asking for the newest release.
struct UpdateAnswer {
    enum class Kind {
        Newer,    // `version` can be had at `page`
        UpToDate, // `version` is the newest one, or older than the running one
        Failed    // `problem` says why, for the user
    };

    Kind kind = Kind::Failed;
    QVersionNumber version;
    QUrl page; // http or https, with a host
    QString problem;
};

// Reads a release announcement, {"version":"1.2.0","url":"https://..."}. The version is one to four numbers
// with dots between them, compared number by number; the address must be one that a browser opens. Anything
// else is a failure: nothing is guessed from what a strange server sends.
UpdateAnswer readRelease(const QByteArray &announcement, const QVersionNumber &running);

// Asks an address for the newest release, without blocking. Refused are addresses other than http and https,
// more than a few redirections, redirections from https to http, answers that are too large, and those that
// are not complete in time.
class UpdateCheck : public QObject
{
    Q_OBJECT

public:
    static constexpr qint64 maxAnswerBytes = 64 * 1024; // bytes
    static constexpr int maxRedirections = 5;
    static constexpr std::chrono::milliseconds patience{15000}; // for the whole answer

    explicit UpdateCheck(QObject *parent = nullptr);
    ~UpdateCheck() override;

    // Ends a check that still runs, without an answer of it. `finished` comes later, never from within.
    void start(const QUrl &feed, const QVersionNumber &running, std::chrono::milliseconds timeout = patience);

signals:
    void finished(const UpdateAnswer &answer);

private:
    void drop();
    void takeReply();
    void fail(const QString &problem);
    QString problemOf(const QNetworkReply &reply) const;

    QNetworkAccessManager *m_network = nullptr;
    QNetworkReply *m_reply = nullptr;
    QVersionNumber m_running;
    QTimer *m_deadline;
};
