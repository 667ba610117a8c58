// The reader of result files makes no network request, whatever a file asks for.
#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <poll.h>
#include <string>
#include <sys/socket.h>
#include <unistd.h>

#include "contract/adapters.h"
#include "contract/temporary_folder.h"
#include "platform/result_document.h"

namespace contract {
namespace {

// Listens on a local port of its own.
class Listener {
 public:
  Listener() : socket_(::socket(AF_INET, SOCK_STREAM, 0)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    // NOLINTNEXTLINE: the interface of sockets
    auto* const general = reinterpret_cast<sockaddr*>(&address);
    if (::bind(socket_, general, size) != 0 || ::listen(socket_, 8) != 0 ||
        ::getsockname(socket_, general, &size) != 0) {
      ADD_FAILURE() << "nobody can listen on this machine";
    }
    port_ = ntohs(address.sin_port);
  }
  Listener(const Listener&) = delete;
  Listener& operator=(const Listener&) = delete;
  ~Listener() { ::close(socket_); }

  std::string address() const { return "http://127.0.0.1:" + std::to_string(port_) + "/"; }
  bool WasCalled() const {
    pollfd waiting{.fd = socket_, .events = POLLIN, .revents = 0};
    return ::poll(&waiting, 1, 0) > 0;
  }
  void Call() const {
    const int caller = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(port_);
    // NOLINTNEXTLINE: the interface of sockets
    EXPECT_EQ(::connect(caller, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
    ::close(caller);
  }

 private:
  int socket_;
  std::uint16_t port_ = 0;
};

TEST(ResultDocumentsNatively, NativeResultDocumentFetchesNothingFromTheNetwork) {
  const Listener listener;
  const TemporaryFolder folder;
  const auto documents = NewResultDocuments();
  const std::string url = listener.address();
  for (const std::string& bytes :
       {"<!DOCTYPE r SYSTEM '" + url + "r.dtd'><r><a>1</a></r>",
        "<!DOCTYPE r PUBLIC '-//r' '" + url + "r.dtd'><r><a>1</a></r>",
        "<!DOCTYPE r PUBLIC '-//r' '" + url + "r.dtd'><r><a>1&x;</a></r>",
        "<!DOCTYPE r [<!ENTITY x SYSTEM '" + url + "x'>]><r><a>1&x;</a></r>",
        "<!DOCTYPE r [<!ENTITY % x SYSTEM '" + url + "x'> %x;]><r><a>1</a></r>",
        "<?xml-stylesheet type='text/xsl' href='" + url + "x.xsl'?><r><a>1</a></r>",
        "<r xmlns:i='http://www.w3.org/2001/XMLSchema-instance' i:noNamespaceSchemaLocation='" +
            url + "r.xsd'><a>1</a></r>",
        "<r xmlns:x='http://www.w3.org/2001/XInclude'><a>1</a><x:include href='" + url +
            "x'/></r>"}) {
    folder.Write("Out.xml", bytes);
    const auto document = documents->New();
    document->Load(folder / "Out.xml");
    if (document->GetParseError().code == 0) {
      document->FirstValue(u"a");
    }
    EXPECT_FALSE(listener.WasCalled()) << bytes;
  }
  listener.Call();
  EXPECT_TRUE(listener.WasCalled()) << "this test would not have noticed";
}

}  // namespace
}  // namespace contract
