#include "remote_bitbang.h"

#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

namespace scanner {
namespace {

int OrThrow(int result, const char* what) {
  if (result < 0) throw std::system_error(errno, std::generic_category(), what);
  return result;
}

/// A socket that listens on a free port of the loopback interface.
int ListenOnLoopback(int& port) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t size = sizeof address;
  const auto anyAddress = reinterpret_cast<sockaddr*>(&address);
  const int listener = OrThrow(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0), "socket");
  OrThrow(bind(listener, anyAddress, size), "bind");
  OrThrow(listen(listener, 1), "listen");
  OrThrow(getsockname(listener, anyAddress, &size), "getsockname");
  port = ntohs(address.sin_port);
  return listener;
}

bool SendAll(int connection, std::string_view text) {
  while (!text.empty()) {
    const ssize_t sent = send(connection, text.data(), text.size(), MSG_NOSIGNAL);
    if (sent <= 0) return false;
    text.remove_prefix(static_cast<std::size_t>(sent));
  }
  return true;
}

/// Until the other end quits or disconnects.
void ServeConnection(int connection, SimulatedChain& chain) {
  char buffer[4096];
  for (bool goesOn = true; goesOn;) {
    const ssize_t received = recv(connection, buffer, sizeof buffer, 0);
    if (received <= 0) return;
    std::string answer;
    goesOn = Obey({buffer, static_cast<std::size_t>(received)}, chain, answer);
    goesOn = SendAll(connection, answer) && goesOn;
  }
}

}  // namespace

bool Obey(std::string_view commands, SimulatedChain& chain, std::string& answer) {
  for (const char command : commands) {
    if (command == 'Q') return false;
    if (command == 'R') answer += chain.Tdo() ? '1' : '0';
    if (command == 't' || command == 'u') chain.Reset();
    if (command >= '0' && command <= '7') {
      const int pins = command - '0';
      chain.Write((pins & 4) != 0, (pins & 2) != 0, (pins & 1) != 0);
    }
  }
  return true;
}

RemoteBitbangServer::RemoteBitbangServer(const std::vector<TapDescription>& devices)
    : chain_(devices), listener_(ListenOnLoopback(port_)), thread_([this] { Serve(); }) {}

RemoteBitbangServer::~RemoteBitbangServer() {
  shutdown(listener_, SHUT_RDWR);  // ends the accept of the thread
  thread_.join();
  close(listener_);
}

void RemoteBitbangServer::Serve() {
  for (int connection; (connection = accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC)) >= 0; close(connection)) {
    ServeConnection(connection, chain_);
  }
}

}  // namespace scanner
