#include "platform/linux/feed/feed_request.h"

#include <QtCore/QEventLoop>
#include <QtCore/QTimer>
#include <QtCore/QUrl>
#include <QtNetwork/QNetworkAccessManager>
#include <QtNetwork/QNetworkReply>
#include <QtNetwork/QNetworkRequest>
#include <QtNetwork/QSslCertificate>
#include <QtNetwork/QSslConfiguration>

#include <optional>

namespace tarvik {
namespace {

constexpr qint64 readAtOnce = 65536; // bytes

QNetworkRequest request(const QUrl& url, const QString& certificates, const FeedLimits& limits) {
    QNetworkRequest request(url);
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::NoLessSafeRedirectPolicy);
    request.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    request.setMaximumRedirectsAllowed(limits.redirects);
    // As it is: what a few packed bytes may unpack to has no limit.
    request.setRawHeader("Accept-Encoding", "identity");
    request.setHeader(QNetworkRequest::UserAgentHeader, QStringLiteral("Tarvik"));
    if (!certificates.isEmpty()) {
        auto tls = QSslConfiguration::defaultConfiguration();
        tls.addCaCertificates(certificates);
        request.setSslConfiguration(tls);
    }
    return request;
}

QString failureOf(const QNetworkReply& reply) {
    switch (reply.error()) {
    case QNetworkReply::NoError:
        return {};
    case QNetworkReply::InsecureRedirectError:
        return "The update server sent Tarvik on to an address that is not secure.";
    case QNetworkReply::TooManyRedirectsError:
        return "The update server sent Tarvik on too many times.";
    case QNetworkReply::SslHandshakeFailedError:
        return "The update server could not prove its identity.";
    case QNetworkReply::TimeoutError:
        return "The update server did not answer in time.";
    default:
        break;
    }
    const auto status = reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    return status >= 400 ? QStringLiteral("The update server answered with error %1.").arg(status)
                         : QStringLiteral("The update server cannot be reached.");
}

} // namespace

FeedAnswer fetchFeed(const QString& address, const QString& certificates, const FeedLimits& limits) {
    const QUrl url(address, QUrl::StrictMode);
    if (!url.isValid() || url.scheme() != QLatin1String("https"))
        return {{}, "The address of the updates is not secure."};
    QNetworkAccessManager manager;
    const std::unique_ptr<QNetworkReply> reply(manager.get(request(url, certificates, limits)));

    FeedAnswer answer;
    QEventLoop loop;
    const auto giveUp = [&](const char* failure) {
        if (answer.failure.isEmpty())
            answer.failure = failure;
        reply->abort();
    };
    QTimer::singleShot(limits.time, &loop, [&] { giveUp("The update server did not answer in time."); });
    QObject::connect(reply.get(), &QNetworkReply::readyRead, &loop, [&] {
        if (answer.failure.isEmpty())
            answer.text += reply->read(limits.bytes + 1 - answer.text.size());
        if (answer.text.size() > limits.bytes)
            giveUp("The list of updates is too large.");
    });
    QObject::connect(reply.get(), &QNetworkReply::finished, &loop, &QEventLoop::quit);
    reply->setReadBufferSize(readAtOnce);
    loop.exec();
    if (answer.failure.isEmpty())
        answer.failure = failureOf(*reply);
    return answer;
}

} // namespace tarvik
