// SPDX-License-Identifier: MIT
#include "PictureHost.h"

#include "platform/HostServices.h"
#include "platform/qt/QtText.h"

#include <KestrinProductEditor/ProductLkpMgr.h>

#include <QDir>
#include <QFile>

#include <memory>
#include <stdexcept>

namespace KestrinProductEditor {

namespace {

const QString kCatalogueFile = QStringLiteral("corvprd2.cpd");

class SilentTrace final : public ITrace
{
public:
    std::int32_t TraceErrNumber() override { return 0; }
    void TraceError(std::u16string_view /*sText*/) override {}
    void TraceEnter(std::u16string_view /*sContext*/) override {}
    void TraceExit(std::u16string_view /*sContext*/) override {}
};

class EmptyConfig final : public IConfig
{
public:
    Variant Value(std::u16string_view /*sKey*/) override { return u""; }
};

} // namespace

PictureHost::PictureHost()
{
    if (!m_folder.isValid())
        throw std::runtime_error("no temporary folder: " + m_folder.errorString().toStdString());
    if (!QDir::setCurrent(m_folder.path()))
        throw std::runtime_error("cannot use the folder " + m_folder.path().toStdString());
    RegisterHostComponent(kTraceClassID, [] { return std::make_shared<SilentTrace>(); });
    RegisterHostComponent(kConfigClassID, [] { return std::make_shared<EmptyConfig>(); });
}

PictureHost::~PictureHost()
{
    RegisterHostComponent(kTraceClassID, nullptr);
    RegisterHostComponent(kConfigClassID, nullptr);
}

void PictureHost::FillCatalogue(const QString& priceList) const
{
    QFile::remove(m_folder.filePath(kCatalogueFile));
    const auto store = ProductLkpMgr::Create();
    const Variant map = Variant::ArrayWith(0, 1, 2, 3);
    const Variant result = store->CSVProductImport(Variant::ArrayWith(FromQt(priceList), map, 1, 0));
    if (result.At(0).Long() != 0)
        throw std::runtime_error("cannot import the price list: " +
                                 ToQt(result.At(1).String()).toStdString());
    if (result.At(2).Long() == 0 || result.At(3).Long() != 0)
        throw std::runtime_error("some lines of the price list are no products");
}

void PictureHost::SpoilCatalogue() const
{
    WriteFile(kCatalogueFile, "no catalogue");
}

void PictureHost::WriteFile(const QString& name, const QByteArray& content) const
{
    QFile file(m_folder.filePath(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size() || !file.flush())
        throw std::runtime_error("cannot write " + file.fileName().toStdString() + ": " +
                                 file.errorString().toStdString());
}

std::u16string PictureHost::Unchanged::GetSetting(std::u16string_view /*application*/,
                                                  std::u16string_view /*section*/,
                                                  std::u16string_view /*key*/,
                                                  std::u16string_view defaultValue) const
{
    return std::u16string(defaultValue);
}

void PictureHost::Unchanged::SaveSetting(std::u16string_view /*application*/, std::u16string_view /*section*/,
                                         std::u16string_view /*key*/, std::u16string_view /*value*/)
{
}

} // namespace KestrinProductEditor
