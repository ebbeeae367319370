#include "http_failure.h"

#include <winhttp.h>
#include <winsock2.h>

#include <string>

namespace ovalink {
namespace {

constexpr DWORD kFlagsOfCertificates =
    WINHTTP_CALLBACK_STATUS_FLAG_CERT_REV_FAILED | WINHTTP_CALLBACK_STATUS_FLAG_INVALID_CERT |
    WINHTTP_CALLBACK_STATUS_FLAG_CERT_REVOKED | WINHTTP_CALLBACK_STATUS_FLAG_INVALID_CA |
    WINHTTP_CALLBACK_STATUS_FLAG_CERT_CN_INVALID | WINHTTP_CALLBACK_STATUS_FLAG_CERT_DATE_INVALID |
    WINHTTP_CALLBACK_STATUS_FLAG_CERT_WRONG_USAGE;

TransferFailure NotSecure() {
  return TransferFailure(
      "No secure connection to the server could be made; its certificate may not be valid");
}

std::string CertificateText(DWORD flags) {
  if ((flags & WINHTTP_CALLBACK_STATUS_FLAG_CERT_REVOKED) != 0) {
    return "The server's certificate has been revoked";
  }
  if ((flags & WINHTTP_CALLBACK_STATUS_FLAG_INVALID_CA) != 0) {
    return "The server's certificate is not trusted";
  }
  if ((flags & WINHTTP_CALLBACK_STATUS_FLAG_CERT_DATE_INVALID) != 0) {
    return "The server's certificate has expired or is not valid yet";
  }
  if ((flags & WINHTTP_CALLBACK_STATUS_FLAG_CERT_CN_INVALID) != 0) {
    return "The server's certificate is for another server";
  }
  return "The server's certificate is not valid";
}

}  // namespace

TransferFailure TimedOut() { return TransferFailure("connection timed out"); }

void ThrowHttpFailure(DWORD error, DWORD certificate_flags) {
  switch (error) {
    case ERROR_WINHTTP_TIMEOUT:
    case WSAETIMEDOUT:
      throw TimedOut();
    case ERROR_WINHTTP_NAME_NOT_RESOLVED:
      throw TransferFailure("The server could not be found");
    case ERROR_WINHTTP_CANNOT_CONNECT:
    case WSAECONNREFUSED:
      throw TransferFailure("The server could not be reached");
    case ERROR_WINHTTP_CONNECTION_ERROR:
    case WSAECONNRESET:
    case WSAECONNABORTED:
    case ERROR_WINHTTP_INVALID_SERVER_RESPONSE:  // also a header that ends too early
      throw ConnectionLost();
    case ERROR_WINHTTP_RESEND_REQUEST:
      throw SendAgain();
    case ERROR_WINHTTP_HEADER_COUNT_EXCEEDED:
    case ERROR_WINHTTP_HEADER_SIZE_OVERFLOW:
    case ERROR_WINHTTP_CHUNKED_ENCODING_HEADER_SIZE_OVERFLOW:
      throw TransferFailure("The server's answer was not understood");
    case ERROR_WINHTTP_SECURE_FAILURE:
      if ((certificate_flags & kFlagsOfCertificates) == 0) {
        throw NotSecure();
      }
      throw TransferFailure(CertificateText(certificate_flags));
    case ERROR_WINHTTP_SECURE_INVALID_CA:
      throw TransferFailure(CertificateText(WINHTTP_CALLBACK_STATUS_FLAG_INVALID_CA));
    case ERROR_WINHTTP_SECURE_CERT_DATE_INVALID:
      throw TransferFailure(CertificateText(WINHTTP_CALLBACK_STATUS_FLAG_CERT_DATE_INVALID));
    case ERROR_WINHTTP_SECURE_CERT_CN_INVALID:
      throw TransferFailure(CertificateText(WINHTTP_CALLBACK_STATUS_FLAG_CERT_CN_INVALID));
    case ERROR_WINHTTP_SECURE_CERT_REVOKED:
      throw TransferFailure(CertificateText(WINHTTP_CALLBACK_STATUS_FLAG_CERT_REVOKED));
    case ERROR_WINHTTP_SECURE_INVALID_CERT:
    case ERROR_WINHTTP_SECURE_CERT_REV_FAILED:
    case ERROR_WINHTTP_SECURE_CERT_WRONG_USAGE:
      throw TransferFailure(CertificateText(0));
    case ERROR_WINHTTP_SECURE_CHANNEL_ERROR:
      throw NotSecure();
    case ERROR_WINHTTP_CLIENT_AUTH_CERT_NEEDED:
      throw TransferFailure("The server asks for a certificate of the user");
    default:
      throw TransferFailure("The transfer failed with error " + std::to_string(error));
  }
}

}  // namespace ovalink
