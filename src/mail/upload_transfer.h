// SPDX-License-Identifier: MIT
// Sending the head office's files, on a thread of its own. The server field
// chooses the way: a plain host (or "host:port") is FTP, "ftps://" demands TLS
// on the control and data connections, "sftp://" goes over SSH; a path after
// the host is the folder the files go into.
#pragma once

#include <functional>
#include <string>

#include "mail/upload_files.h"
#include "mail/upload_settings.h"
#include "platform/jobs.h"

namespace tilo {

// Where the files go, as libcurl addresses it.
struct UploadTarget {
  std::string login_url;   // the server's own root: connecting logs in there
  std::string folder_url;  // the folder the files go into, ending in "/"
  bool require_tls = false;
  bool ssh = false;
};
UploadTarget ParseUploadServer(const std::string& server);

// Everything the thread needs, copied when the upload starts: the thread reads
// nothing the till goes on changing.
struct UploadJob {
  UploadSetup setup;
  UploadFlags flags;
  std::string title_after;  // the main window's title once the files are sent
  // Shows a title on the main window; called from the upload's thread.
  std::function<void(const std::string&)> set_title;
};

// The whole course of one upload: log in, send each ticked file (a refused one
// doesn't stop the next), tell the outcome under "Transmission".
void SendUpload(const UploadJob& job, JobControl& control);

}  // namespace tilo
