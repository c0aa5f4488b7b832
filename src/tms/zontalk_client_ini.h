// The folder keys of the ZonTalk client's profile file "zontalkclient.ini": where each of its
// three profiles works and logs, and where the second finds the terminal applications.
#pragma once

#include <string>

// Writes the keys to "zontalkclient.ini" in `folder` ("\" added when missing), in a fixed order;
// every other byte of the file stays. A key the file refuses is skipped silently.
void WriteZontalkClientFolders(const std::string& folder);
