#include "OrvoIni.h"

#include <QSaveFile>
// Settings are 8-bit text kept as they are; no wide-character conversion.
#define SI_NO_CONVERSION
#define SI_IMPLEMENTATION
#include <SimpleIni.h>

struct OrvoIni::Store {
    CSimpleIniA ini{false, false, false};
};

OrvoIni::OrvoIni() : store_(std::make_unique<Store>()) {}
OrvoIni::~OrvoIni() = default;

bool OrvoIni::load(const std::string& path) {
    path_ = path;
    store_->ini.Reset();
    return store_->ini.LoadFile(path.c_str()) >= 0;
}

bool OrvoIni::save() const {
    if (path_.empty()) return false;
    std::string text;
    if (store_->ini.Save(text) < 0) return false;
    QSaveFile file(QString::fromStdString(path_));
    if (!file.open(QIODevice::WriteOnly)) return false;
    file.write(text.data(), static_cast<qint64>(text.size()));
    return file.commit();
}

std::string OrvoIni::readString(const std::string& section, const std::string& key,
                                const std::string& fallback) const {
    const char* value = store_->ini.GetValue(section.c_str(), key.c_str(), nullptr);
    return value ? value : fallback;
}

void OrvoIni::writeString(const std::string& section, const std::string& key, const std::string& value) {
    store_->ini.SetValue(section.c_str(), key.c_str(), value.c_str());
}

namespace {
std::unique_ptr<OrvoIni>& iniSlot() {
    static std::unique_ptr<OrvoIni> ini = std::make_unique<OrvoIni>();
    return ini;
}
}  // namespace

OrvoIni& ORVOINI() { return *iniSlot(); }
void resetOrvoIni() { iniSlot() = std::make_unique<OrvoIni>(); }
