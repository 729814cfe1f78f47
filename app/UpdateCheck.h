// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QUrl>
#include <QVersionNumber>

#include <chrono>

class QNetworkAccessManager;
class QNetworkReply;
class QTimer;

// The result of a check for the newest release.
struct UpdateAnswer {
    enum class Kind {
        Newer,    // `version` is available at `page`
        UpToDate, // `version` is the running version or older
        Failed    // see `problem`, a text for the user
    };

    Kind kind = Kind::Failed;
    QVersionNumber version;
    QUrl page; // http or https, with a host
    QString problem;
};

// Parses a release announcement, {"version":"1.2.0","url":"https://..."}. The version has one to four numbers
// separated by dots, compared number by number; the address must be one that a browser can open. Anything
// else is a failure: the answer of an unknown server is never interpreted loosely.
UpdateAnswer readRelease(const QByteArray &announcement, const QVersionNumber &running);

// Requests the newest release from an address without blocking. Rejects addresses other than http and https,
// too many redirects, redirects from https to http, answers that are too large, and those that are not
// complete in time.
class UpdateCheck : public QObject
{
    Q_OBJECT

public:
    static constexpr qint64 maxAnswerBytes = 64 * 1024; // bytes
    static constexpr int maxRedirections = 5;
    static constexpr std::chrono::milliseconds patience{15000}; // time limit for the complete answer

    explicit UpdateCheck(QObject *parent = nullptr);
    ~UpdateCheck() override;

    // Cancels a running check, whose result is not reported. `finished` is always emitted later, never from
    // within.
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
