// Whole-file replacement that survives a crash or power cut at any moment:
// readers see either the old content or the new, never none and never a mix.
#pragma once

#include <QByteArray>
#include <QString>

namespace AtomicFile {

// Writes content to tempPath (which must lie in targetPath's directory),
// flushes it to the disk and renames it over targetPath. On failure the
// target is left exactly as it was, the temporary file is removed, false is
// returned and *error (when given) says which step failed and why.
bool replace(
    const QString& tempPath, const QString& targetPath, const QByteArray& content, QString* error = nullptr);

} // namespace AtomicFile
