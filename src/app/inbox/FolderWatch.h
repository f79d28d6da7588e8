// The watch of the inbox folder: a worker thread blocked on the kernel's
// file notifications hands each change of the folder to the main thread.
#pragma once

#include <QObject>
#include <QString>
#include <functional>
#include <memory>
#include <thread>

class TFolderWatchObjectEx : public QObject {
public:
    using OnChange = std::function<void(int action, const QString& name)>;

    explicit TFolderWatchObjectEx(OnChange onChange);
    ~TFolderWatchObjectEx() override;

    // Stops a running worker and starts one on the folder. False (and no
    // worker) when the folder can't be watched; why is in the run log.
    bool SetPathToMonitor(const QString& path);

private:
    void stop();
    void run(int notify, int wake);

    OnChange onChange_;
    std::thread worker_;
    int notify_ = -1;
    int wake_ = -1;  // written to end the worker's wait
};

// The single watch, null before AddWatches.
TFolderWatchObjectEx* FolderWatchObjectEx();

// Starts the watch of MONITOREDFOLDER; a second call says "Watches are already in uses".
void AddWatches();

// Ends the watch (at close, and between tests).
void RemoveWatches();
