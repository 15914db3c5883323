#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Chain.h"
#include "databases.h"
#include "find_forms.h"
#include "identify/output.h"

/// What the page asks: texts in UTF-8 go in, a JSON text comes out. All rules are those of the libraries, and the forms are
/// those of the command.
namespace web {

/// The most faults and findings that an answer lists. The command lists all.
constexpr std::size_t kMostFindings = 100;

/// A chain that was read, with the finder that identified it.
struct Read {
  std::string comm;
  std::unique_ptr<plddb::chain::DeviceFinder> finder;
  std::optional<tool::IdentifiedChain> chain;
};

/// The description files, those of the user first; and what was asked last.
struct Page {
  std::vector<tool::Database> databases;
  std::size_t own = 0;  ///< How many of the databases are the user's.
  Read read;
  tool::Answer found;
  std::string answer;  ///< The last one, which JavaScript reads.

  /// Forgets what refers to the databases, before they change.
  void Forget();

  std::vector<const DeviceList*> Lists() const;
};

/// There is one for each instance of the program.
Page& ThePage();

/// An answer that shows `why` in place of what was asked.
std::string Failed(const std::string& why);

/// `objects`, each {...}, as one with the members of all.
std::string Joined(const std::vector<std::string>& objects);

/// \name The chain
///@{

/// Reads a scan, or ids, and identifies each position.
std::string Identify(std::string_view text, std::string_view order, const std::string& comm, std::string_view irLengths,
                     bool trustsIrLengths);

/// The chain in a form of the command.
std::string Form(std::string_view name);

/// The drawing of the chain, with so many TAPs in a row.
std::string Draw(std::size_t perRow);
///@}

/// \name Devices
///@{
std::string Find(std::string_view text);

/// Shows the device that Find listed as the nth.
std::string Show(std::size_t n);
///@}

/// \name Files
///@{

/// Judges a programming file against the chain that was read last, if there is one.
std::string Fits(const std::string& name, std::string_view bytes);

/// Adds a file of the user. An XML file starts with '<'; any other is taken for a BSDL file.
std::string Add(const std::string& name, std::string text, const std::string& family);

/// Adds a file that comes with the page.
std::string AddShipped(std::string name, std::string text);

/// Removes a file of the user, if there is one of this name.
std::string Remove(const std::string& name);
///@}

}  // namespace web
