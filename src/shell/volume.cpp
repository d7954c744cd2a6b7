#include "shell/volume.h"

#include "shell/base/windows_api.h"

static IAudioEndpointVolume *openMasterVolume()
{
    IMMDeviceEnumerator *enumerator = nullptr;
    if (FAILED(CoCreateInstance(__uuidof(MMDeviceEnumerator), nullptr, CLSCTX_INPROC_SERVER,
                                IID_PPV_ARGS(&enumerator))) ||
        !enumerator)
        return nullptr;
    IMMDevice *device = nullptr;
    const HRESULT found = enumerator->GetDefaultAudioEndpoint(eRender, eConsole, &device);
    enumerator->Release();
    if (FAILED(found) || !device) return nullptr;
    IAudioEndpointVolume *volume = nullptr;
    const HRESULT opened = device->Activate(__uuidof(IAudioEndpointVolume), CLSCTX_ALL, nullptr,
                                            reinterpret_cast<void **>(&volume));
    device->Release();
    return SUCCEEDED(opened) ? volume : nullptr;
}

void clampMasterVolume()
{
    if (!(volumeClamp > 0.0f) || volumeClamp > 1.0f) return;
    IAudioEndpointVolume *volume = openMasterVolume();
    if (!volume) return;
    float level = 0.0f;
    if (SUCCEEDED(volume->GetMasterVolumeLevelScalar(&level)) && level > volumeClamp)
        volume->SetMasterVolumeLevelScalar(volumeClamp, nullptr);
    volume->Release();
}
