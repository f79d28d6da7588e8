// HTTP for the climate services and the geocoder, on libcurl. One attempt,
// no retries, no proxy; an answer's HTTP status never makes it a failure
// here, so a service's error page lands in the file like data.
#pragma once

#include <string>

// Downloads the body of url into targetFilePath (through a temporary file)
// with the agent "PVGISDownloader", a connect time-out of 30 s and an overall
// one of 300 s, so that a dead network fails instead of hanging. False when
// no answer came or the file cannot be written; the target is then untouched.
bool DownloadFileViaWininet(const std::string& url, const std::string& targetFilePath);

struct HttpTextRequest {
    std::string url;
    std::string userAgent;
    long connectTimeoutMs = 0;
    long readTimeoutMs = 0;  // longest wait for the next bytes
};

struct HttpTextAnswer {
    bool answered = false;  // a complete answer came, whatever its status
    long status = 0;
    std::string body;
    std::string error;  // why no answer came
};

HttpTextAnswer HttpGetText(const HttpTextRequest& request);
