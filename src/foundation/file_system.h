// The one way the system touches files and folders. Every path is a Windows path ("c:\x\y.txt",
// folders usually with a trailing "\"); the object maps it to the host itself.
//
// The senses of the results differ between operations and are kept exactly as callers test
// them: FileExists and FolderExists are true when the thing exists; CreateFolder and
// DeleteFolder are true when they FAILED; CopyFolder is true when it SUCCEEDED; DeleteFile,
// CopyFile and MoveFile report through a trailing failure flag.
//
// No operation throws. A fault sets strErrorMessage to the operation's own prefix followed by
// the fault's description and the operation returns its failure value (0, an empty list, or
// the failure sense of its flag). strErrorMessage is never cleared on success.
#pragma once

#include "foundation/clock.h"

#include <cstdint>
#include <exception>
#include <memory>
#include <string>
#include <vector>

class FileSystem {
public:
    FileSystem();
    // Closes every text stream still open.
    ~FileSystem();
    FileSystem(const FileSystem&) = delete;
    FileSystem& operator=(const FileSystem&) = delete;

    // True when a directory search finds a file or folder matching `path` (wildcards allowed).
    // Sets strErrorMessage to path + " already exists" or path + " does not exist".
    bool FileExists(const std::string& path);
    bool FolderExists(const std::string& folder);

    // Creates one folder; its parent must exist. True when creation FAILED (also when the
    // folder is already there).
    bool CreateFolder(const std::string& folder);
    // Deletes the folder and everything in it, read-only files included. True when it FAILED.
    bool DeleteFolder(const std::string& folder);
    // Copies the tree of `source` to `destination`. True when the copy SUCCEEDED. Without
    // `overwrite`, a file already present at the destination fails the copy.
    bool CopyFolder(const std::string& source, const std::string& destination, bool overwrite);
    // Copies each sub-folder of `source` (overwriting) into `destination`. True when all were
    // copied.
    bool CopySubFolders(const std::string& source, const std::string& destination);

    // One file each; `failed` is set at the start and cleared only when the work is done.
    // CopyFile overwrites; MoveFile does not (an existing destination fails the move). A
    // read-only file is not deleted.
    void DeleteFile(const std::string& path, bool& failed);
    void CopyFile(const std::string& source, const std::string& destination, bool& failed);
    void MoveFile(const std::string& source, const std::string& destination, bool& failed);

    // Sizes in bytes; 0 when the size cannot be taken.
    std::int64_t GetFileSize(const std::string& path);
    std::int64_t GetFolderSize(const std::string& folder);

    // "c:\a\b.txt" gives "b.txt".
    std::string GetFileNameFromPath(const std::string& path) const;
    // The name before the first "." and the name after it: "a.tar.gz" gives "a" and "tar.gz",
    // so the two always put the name back together; a name without "." has no extension.
    std::string GetFileNameNoExt(const std::string& fileName) const;
    std::string GetFileExtension(const std::string& fileName) const;

    // The three times of a file, as local times when `local` is set (UTC otherwise). True when
    // all three were read.
    bool GetFileTimes(const std::string& path, DateTime& creation, DateTime& lastAccess,
                      DateTime& lastWrite, bool local);

    // Files only, never folders, in `folder` (a "\" is added when missing) whose names match
    // the Windows wildcard pattern, case-insensitively. An empty pattern means every file.
    std::vector<std::string> GetFilesInFolder(const std::string& folder,
                                              const std::string& pattern = "*.*");
    long NoOfFilesInFolder(const std::string& folder, const std::string& pattern = "*.*");
    void DeleteFilesInFolder(const std::string& folder, const std::string& pattern = "*.*");
    // Deletes the matching files whose modification date lies MORE than `days` whole days
    // before today: with 7, a file from eight days ago goes, one from seven days ago stays.
    void DeleteFilesInFolderByDay(const std::string& folder, const std::string& pattern,
                                  std::int16_t days);

    // Windows attribute bits (1 is read-only). True when it FAILED.
    bool SetFileAttributes(const std::string& path, std::uint32_t attributes);

    // Text streams by file number (1 and up). Mode 0 reads (the file must exist), 1 writes
    // (created or emptied), any other appends (created when missing). A result below 1 means
    // no file was opened. Lines are written with CR LF and read up to LF or CR LF.
    long OpenFile(const std::string& path, int mode);
    // With `wholeLine` reads the next line without its line end, otherwise `count` characters
    // (fewer at the end of the file). True when it FAILED, reading past the end included.
    bool ReadData(long fileNumber, std::string& data, bool wholeLine, long count = 0);
    // Writes `text`, followed by CR LF with `wholeLine`. True when it FAILED.
    bool WriteData(long fileNumber, const std::string& text, bool wholeLine);
    // True at the end of a stream opened for reading. A number that names no open stream, or a
    // stream opened for writing, also reads as at its end, so a read loop always stops.
    // (Spelt Eof: EOF is a macro of the C library.)
    bool Eof(long fileNumber);
    void CloseFile(long fileNumber);
    // The number of lines of a text file; lets pending window events run once per line.
    long CountLines(const std::string& path);

    const std::string& strErrorMessage() const { return strErrorMessage_; }

private:
    struct OpenStream;

    OpenStream& streamFor(long fileNumber);
    void fail(const std::string& prefix, const std::exception& fault);

    std::vector<std::unique_ptr<OpenStream>> streams_; // position + 1 is the file number
    long openCount_ = 0;
    std::string strErrorMessage_;
};
