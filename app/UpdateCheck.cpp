// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/UpdateCheck.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QRegularExpression>
#include <QTimer>

#include <utility>

namespace
{

bool isWebAddress(const QUrl &url)
{
    return url.isValid() && !url.host().isEmpty() &&
           (url.scheme() == QLatin1StringView("https") || url.scheme() == QLatin1StringView("http"));
}

// Up to four numbers of up to nine digits, which fit an int.
QVersionNumber strictVersion(const QString &text)
{
    static const QRegularExpression form(QStringLiteral("\\A[0-9]{1,9}(\\.[0-9]{1,9}){0,3}\\z"));
    return form.match(text).hasMatch() ? QVersionNumber::fromString(text) : QVersionNumber();
}

} // namespace

UpdateAnswer readRelease(const QByteArray &announcement, const QVersionNumber &running)
{
    const QJsonObject release = QJsonDocument::fromJson(announcement).object();
    UpdateAnswer answer;
    answer.version = strictVersion(release.value(QLatin1StringView("version")).toString());
    answer.page = QUrl(release.value(QLatin1StringView("url")).toString(), QUrl::StrictMode);
    if (answer.version.isNull()) {
        answer.problem = UpdateCheck::tr("The answer of the update server names no version.");
        return answer;
    }
    // Normalised: 1.2 equals 1.2.0.
    if (answer.version.normalized() <= running.normalized())
        answer.kind = UpdateAnswer::Kind::UpToDate;
    else if (isWebAddress(answer.page))
        answer.kind = UpdateAnswer::Kind::Newer;
    else
        answer.problem =
            UpdateCheck::tr("The update server announces version %1, but no usable address for it.")
                .arg(answer.version.toString());
    return answer;
}

UpdateCheck::UpdateCheck(QObject *parent) : QObject(parent), m_deadline(new QTimer(this))
{
    m_deadline->setSingleShot(true);
    connect(m_deadline, &QTimer::timeout, this,
            [this] { fail(tr("The update server did not answer in time.")); });
}

UpdateCheck::~UpdateCheck()
{
    drop();
}

void UpdateCheck::start(const QUrl &feed, const QVersionNumber &running, std::chrono::milliseconds timeout)
{
    drop();
    m_running = running;
    if (!isWebAddress(feed)) {
        QMetaObject::invokeMethod(
            this, [this] { fail(tr("The address of the update server is not a web address.")); },
            Qt::QueuedConnection);
        return;
    }
    if (!m_network)
        m_network = new QNetworkAccessManager(this);

    QNetworkRequest request(feed);
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::NoLessSafeRedirectPolicy);
    request.setMaximumRedirectsAllowed(maxRedirections);
    request.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    request.setHeader(QNetworkRequest::UserAgentHeader, QStringLiteral("FernlightLarkspur"));
    request.setRawHeader("Accept", "application/json");
    m_reply = m_network->get(request);
    // One byte more than the limit is enough to detect an oversized answer; the rest is not read.
    m_reply->setReadBufferSize(maxAnswerBytes + 1);
    connect(m_reply, &QNetworkReply::readyRead, this, [this] {
        if (m_reply->bytesAvailable() > maxAnswerBytes)
            fail(tr("The answer of the update server is too large."));
    });
    connect(m_reply, &QNetworkReply::finished, this, &UpdateCheck::takeReply);
    m_deadline->start(timeout);
}

void UpdateCheck::drop()
{
    m_deadline->stop();
    if (QNetworkReply *reply = std::exchange(m_reply, nullptr)) {
        reply->disconnect(this);
        reply->abort();
        reply->deleteLater();
    }
}

void UpdateCheck::takeReply()
{
    if (m_reply->error() != QNetworkReply::NoError) {
        fail(problemOf(*m_reply));
        return;
    }
    const QByteArray announcement = m_reply->read(maxAnswerBytes + 1);
    drop();
    if (announcement.size() > maxAnswerBytes)
        fail(tr("The answer of the update server is too large."));
    else
        emit finished(readRelease(announcement, m_running));
}

void UpdateCheck::fail(const QString &problem)
{
    drop();
    UpdateAnswer answer;
    answer.problem = problem;
    emit finished(answer);
}

QString UpdateCheck::problemOf(const QNetworkReply &reply) const
{
    const int status = reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    if (status >= 400)
        return tr("The update server answered with error %1.").arg(status);
    switch (reply.error()) {
    case QNetworkReply::TooManyRedirectsError:
    case QNetworkReply::InsecureRedirectError:
    case QNetworkReply::ProtocolUnknownError:
        return tr("The update server leads to an address that is not to be trusted.");
    case QNetworkReply::SslHandshakeFailedError:
        return tr("The connection to the update server is not secure.");
    default:
        return tr("The update server cannot be reached (%1).").arg(reply.errorString());
    }
}
