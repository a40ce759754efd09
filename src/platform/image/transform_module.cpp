// Hands operations on to the module of the transforms.
#include "src/platform/image/transform_module.h"

#include <utility>

#include "src/platform/image/base/module_file.h"

static constexpr char kFileName[] = "libvarnel_transforms.so";

LazyImageTransform::~LazyImageTransform()
{
    if (m_pModule)
        m_pDestroy(m_pModule);
}

void LazyImageTransform::SetImage(ImageBuffer& aImage)
{
    if (m_pModule)
        m_pModule->SetImage(aImage);
    else
        m_aImage = std::exchange(aImage, {});
}

void LazyImageTransform::GetImageBytes(ImageBuffer& aImage)
{
    if (m_pModule)
        m_pModule->GetImageBytes(aImage);
    else
        aImage = std::exchange(m_aImage, {});
}

void LazyImageTransform::GetMaskBytes(ImageBuffer& aMask)
{
    if (bOpen())
        m_pModule->GetMaskBytes(aMask);
    else
        aMask = {};
}

bool LazyImageTransform::bOpen()
{
    if (m_bTried)
        return m_pModule != nullptr;
    m_bTried = true;
    void* pModule = OpenModule(kFileName);
    const auto pCreate = ModuleFunction<CreateImageTransform>(pModule, kCreateImageTransform);
    m_pDestroy = ModuleFunction<DestroyImageTransform>(pModule, kDestroyImageTransform);
    if (pCreate && m_pDestroy)
        m_pModule = pCreate();
    if (m_pModule)
        m_pModule->SetImage(m_aImage);
    return m_pModule != nullptr;
}
