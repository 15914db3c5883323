#pragma once

#include <string>
#include <string_view>
#include <thread>

#include "simulated_chain.h"

/// \file
/// The other end of OpenOCD's adapter driver remote_bitbang: a character from OpenOCD sets or reads the pins of the chain.

namespace scanner {

/// Runs `commands` in order and appends their output to `answer`. False when the other end quits; the rest is
/// not looked at then.
///
///   '0' to '7'            sets TCK (4), TMS (2) and TDI (1)
///   'R'                   answers TDO, '0' or '1'
///   'r' 's' 't' 'u'       sets TRST and SRST: neither, SRST, TRST, both
///   'B' 'b'               a lamp on or off
///   'Q'                   good-bye
bool Obey(std::string_view commands, SimulatedChain& chain, std::string& answer);

/// Serves a chain to one OpenOCD after the other on the loopback interface, in its own thread.
class RemoteBitbangServer {
 public:
  explicit RemoteBitbangServer(const std::vector<TapDescription>& devices);  ///< Listens when it returns.
  ~RemoteBitbangServer();  ///< Waits for the end of a connection that is still open: end its OpenOCD first.
  RemoteBitbangServer(const RemoteBitbangServer&) = delete;
  RemoteBitbangServer& operator=(const RemoteBitbangServer&) = delete;

  int Port() const { return port_; }  ///< A free one that the system chose.

 private:
  void Serve();

  SimulatedChain chain_;
  int port_ = 0;
  int listener_;
  std::thread thread_;
};

}  // namespace scanner
