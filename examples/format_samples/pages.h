#pragma once

#include <set>
#include <string>

/// A page of docs/formats with its examples as the library writes them today, and the names of those in `shown`.
///
/// A fence `text made-by NAME` holds the output of the writer NAME, one `text read-by NAME` in front of it the file
/// that this writer is given. Blanks at line ends are left out.
std::string RenewedPage(const std::string& page, std::set<std::string>& shown);
