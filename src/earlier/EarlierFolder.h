#pragma once

#include "earlier/Beginnings.h"
#include "earlier/FileContent.h"
#include "files/WholeFile.h"
#include "values/Date.h"

#include <filesystem>
#include <optional>

namespace kpx {

/// The folder of kept contents, "Velmora-earlier" beside the data folder "Velmora", mode 0700.
///
/// To keep a content costs a hard link: data files are replaced by renaming, so the old one stays as it is under
/// its second name. Where the file system has no links, a copy is made.
///
/// A kept file's own time of last change is when it was replaced; its name says when it was written. Between the
/// two it was in force, and a hole between two kept contents can be seen.
///
/// What is known of the data files' beginnings is noted in an extended attribute of the folder itself.
class EarlierFolder {
public:
    explicit EarlierFolder(std::filesystem::path dataFolder);

    /// What is known of each file, the one in the data folder included. What claims to be written later than
    /// `now` counts as written now; the folder need not exist.
    HouseholdContents contents(Date now) const;

    /// contents(), after every data file whose time cannot be true was given another one: a file that claims to be of
    /// the future, as after a clock was put right, and one older than a content that was kept before it, as when a
    /// backup was put back together with its time.
    HouseholdContents settledContents(Date now, Date otherTime) const;

    /// As noted. Where nothing is kept yet nothing need be noted either; null when something is kept and no note tells
    /// of what was before it, as where the folder was copied without its attributes or the file system has none.
    std::optional<Beginnings> beginnings(const HouseholdContents& contents) const;

    /// Makes the folder, if need be.
    void note(const Beginnings& beginnings) const;

    /// The content's bytes, wherever it stands.
    WholeFile read(const FileContent& content) const;

    /// Keeps what stands in the data folder now, once, however often it is asked to; under the name of a deletion
    /// if that is what is about to replace it. `contents` are those of this moment. Null when it cannot be kept.
    /// REQUIRES: contents has a present content of that file.
    std::optional<FileContent> keep(std::size_t file, bool asDeletion, const HouseholdContents& contents) const;

    /// From then on what is kept outlasts a loss of power.
    void synchronize() const;

    /// Notes when a kept content was replaced.
    void setUntil(const FileContent& kept, Date replaced) const;

    void remove(const FileContent& kept) const;

private:
    std::filesystem::path present(std::size_t file) const;
    std::filesystem::path kept(const FileContent& content) const;
    /// Names nothing where a file of another kind stands in its place.
    std::filesystem::path asFolder() const;

    std::filesystem::path m_dataFolder;
    std::filesystem::path m_folder;
};

/// As files count time.
std::timespec fileTimeOf(Date date);

}  // namespace kpx
