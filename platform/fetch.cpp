#include "platform/fetch.h"

#include <QEventLoop>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <memory>

#include "platform/qt_text.h"

namespace rws {

namespace {

constexpr qint64 kLargestBody = 4096;

QNetworkRequest MakeRequest(const std::string& url) {
  QNetworkRequest request(QUrl(FromPath(url)));
  // A redirection fails: the address is fixed, and the toolkit at times never finishes one.
  request.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                       QNetworkRequest::ManualRedirectPolicy);
  request.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
  request.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
  // Packed, a small answer could unfold into a large one.
  request.setRawHeader("Accept-Encoding", "identity");
  return request;
}

std::optional<std::string> BodyOf(QNetworkReply& reply) {
  constexpr int kLowestFailure = 300;
  const int status = reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
  if (!reply.isFinished() || reply.error() != QNetworkReply::NoError || status >= kLowestFailure)
    return {};
  const QByteArray body = reply.readAll();
  if (body.size() > kLargestBody) return {};
  return body.toStdString();
}

}  // namespace

std::optional<std::string> Fetcher::Fetch(const std::string& url) {
  if (running_) return {};
  QNetworkAccessManager manager;
  QEventLoop loop;
  const std::unique_ptr<QNetworkReply> reply(manager.get(MakeRequest(url)));
  reply->setReadBufferSize(kLargestBody + 1);
  QObject::connect(reply.get(), &QNetworkReply::readyRead, reply.get(), [&] {
    if (reply->bytesAvailable() > kLargestBody) reply->abort();
  });
  QObject::connect(reply.get(), &QNetworkReply::finished, &loop, &QEventLoop::quit);
  running_ = reply.get();
  // The end of the program ends the loop as well, with the answer still out.
  if (!reply->isFinished()) loop.exec();
  running_ = nullptr;
  return BodyOf(*reply);
}

void Fetcher::Cancel() {
  if (running_) running_->abort();
}

}  // namespace rws
