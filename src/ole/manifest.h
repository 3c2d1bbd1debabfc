#pragma once

#include <string>

namespace ole {

/// The side-by-side manifest of the server's assembly, as UTF-8 XML: with it a host uses the
/// classes without registration.
std::string ManifestText();

/// Writes the manifest to a file, all or nothing. Raises the system's error.
void WriteManifest(const std::wstring& path);

}  // namespace ole
