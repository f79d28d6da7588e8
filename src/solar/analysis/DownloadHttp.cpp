#include "DownloadHttp.h"

#include <curl/curl.h>

#include <QString>
#include <cstdio>

#include "app/services/DialogService.h"
#include "app/services/RunLog.h"

namespace {

constexpr long CONNECT_TIMEOUT_S = 30;
constexpr long TRANSFER_TIMEOUT_S = 300;

// curl_global_init is not thread-safe; everything here runs on the main
// thread, and the first use does it once.
CURL* newEasyHandle() {
    static const bool initialised = curl_global_init(CURL_GLOBAL_DEFAULT) == CURLE_OK;
    return initialised ? curl_easy_init() : nullptr;
}

// Direct connection whatever the environment's proxy says, redirects
// followed, no signals (time-outs on a thread-safe resolver).
void setCommonOptions(CURL* curl, const std::string& url, const std::string& agent, char* errorBuffer) {
    curl_easy_setopt(curl, CURLOPT_URL, url.c_str());
    curl_easy_setopt(curl, CURLOPT_USERAGENT, agent.c_str());
    curl_easy_setopt(curl, CURLOPT_PROXY, "");
    curl_easy_setopt(curl, CURLOPT_FOLLOWLOCATION, 1L);
    curl_easy_setopt(curl, CURLOPT_NOSIGNAL, 1L);
    curl_easy_setopt(curl, CURLOPT_ERRORBUFFER, errorBuffer);
    errorBuffer[0] = '\0';
}

std::string curlReason(CURLcode code, const char* errorBuffer) {
    return errorBuffer[0] ? errorBuffer : curl_easy_strerror(code);
}

size_t writeToFile(char* data, size_t size, size_t count, void* file) {
    return std::fwrite(data, size, count, static_cast<std::FILE*>(file)) * size;
}

size_t appendToString(char* data, size_t size, size_t count, void* text) {
    static_cast<std::string*>(text)->append(data, size * count);
    return size * count;
}

void cannotCreate(const std::string& path) {
    dialogService().showMessage(QString::fromStdString("ERROR: Cannot create output file: " + path), "Zorvex64");
}

}  // namespace

bool DownloadFileViaWininet(const std::string& url, const std::string& targetFilePath) {
    CURL* curl = newEasyHandle();
    if (!curl) {
        PrintRunLog("ERROR: InternetOpenA failed\n");
        return false;
    }
    const std::string temporary = targetFilePath + ".tmp";
    std::FILE* file = std::fopen(temporary.c_str(), "wb");
    if (!file) {
        curl_easy_cleanup(curl);
        cannotCreate(targetFilePath);
        return false;
    }
    char errorBuffer[CURL_ERROR_SIZE];
    setCommonOptions(curl, url, "PVGISDownloader", errorBuffer);
    curl_easy_setopt(curl, CURLOPT_CONNECTTIMEOUT, CONNECT_TIMEOUT_S);
    curl_easy_setopt(curl, CURLOPT_TIMEOUT, TRANSFER_TIMEOUT_S);
    curl_easy_setopt(curl, CURLOPT_WRITEFUNCTION, writeToFile);
    curl_easy_setopt(curl, CURLOPT_WRITEDATA, file);
    const CURLcode code = curl_easy_perform(curl);
    const bool closed = std::fclose(file) == 0;
    if (code != CURLE_OK) {
        PrintRunLog("ERROR: InternetOpenUrlA failed\n");
        PrintRunLog("%s\n", curlReason(code, errorBuffer).c_str());
        curl_easy_cleanup(curl);
        std::remove(temporary.c_str());
        if (code == CURLE_WRITE_ERROR) cannotCreate(targetFilePath);
        return false;
    }
    curl_easy_cleanup(curl);
    if (!closed || std::rename(temporary.c_str(), targetFilePath.c_str()) != 0) {
        std::remove(temporary.c_str());
        cannotCreate(targetFilePath);
        return false;
    }
    return true;
}

HttpTextAnswer HttpGetText(const HttpTextRequest& request) {
    HttpTextAnswer answer;
    CURL* curl = newEasyHandle();
    if (!curl) {
        answer.error = "no HTTP client";
        return answer;
    }
    char errorBuffer[CURL_ERROR_SIZE];
    setCommonOptions(curl, request.url, request.userAgent, errorBuffer);
    curl_easy_setopt(curl, CURLOPT_CONNECTTIMEOUT_MS, request.connectTimeoutMs);
    // A read time-out: fewer than 1 byte a second for that long ends the call.
    curl_easy_setopt(curl, CURLOPT_LOW_SPEED_LIMIT, 1L);
    curl_easy_setopt(curl, CURLOPT_LOW_SPEED_TIME, (request.readTimeoutMs + 999) / 1000);
    curl_easy_setopt(curl, CURLOPT_WRITEFUNCTION, appendToString);
    curl_easy_setopt(curl, CURLOPT_WRITEDATA, &answer.body);
    const CURLcode code = curl_easy_perform(curl);
    if (code == CURLE_OK) {
        answer.answered = true;
        curl_easy_getinfo(curl, CURLINFO_RESPONSE_CODE, &answer.status);
    } else {
        answer.error = curlReason(code, errorBuffer);
    }
    curl_easy_cleanup(curl);
    return answer;
}
