// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

#include <map>

namespace ostrel {

/// The checksums of an archive's files, as text:
///
///     # Ostrel manifest 1: ...
///     <SHA-256>  <name>
///     # <count> files. SHA-256 of the lines above: <SHA-256>
///
/// "sha256sum -c" reads it too: it skips lines that begin with "#", and has the same escapes for line ends and
/// backslashes in names.
struct Manifest {
    enum class Fault {
        None,
        Foreign, ///< something else
        Newer,   ///< of a newer version than this program knows
        Damaged  ///< cut off, or changed
    };

    /// The files' SHA-256 in hexadecimal digits, by the path from the manifest's folder.
    std::map<QByteArray, QByteArray> sums;

    QByteArray bytes() const;
    /// Only what bytes() makes is without a fault.
    static Fault read(const QByteArray &bytes, Manifest &manifest);
};

/// A manifest in its folder.
class ManifestFile {
public:
    /// Reads it if it is there. The command ends when something else is, or when none could be written.
    explicit ManifestFile(const QString &path);

    const QString &path() const { return path_; }
    const QString &place() const { return place_; }
    bool isThere() const { return there_; }
    const Manifest &manifest() const { return manifest_; }

    /// The name in the manifest of a file at a place (ArchiveFiles.h), and the other way round.
    QByteArray nameOf(const QString &place) const;
    QString placeOf(const QByteArray &name) const;

    /// Writes the first manifest; there must be nothing under its name. In words why not; empty when it is on the disk.
    QString write(const Manifest &manifest) const;

private:
    void read();
    void expectRoom() const;

    QString path_;
    QString place_;
    QString folder_;
    bool there_ = false;
    Manifest manifest_;
};

} // namespace ostrel
