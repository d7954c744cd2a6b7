#include "sound/speech.h"

// Selects the first American English voice. If anything fails, the system's default stays.
static void chooseEnglish(ISpVoice *voice)
{
    ISpObjectTokenCategory *category = nullptr;
    CoCreateInstance(CLSID_SpObjectTokenCategory, nullptr, CLSCTX_ALL, IID_ISpObjectTokenCategory,
                     reinterpret_cast<void **>(&category));
    if (!category) return;
    IEnumSpObjectTokens *voices = nullptr;
    if (SUCCEEDED(category->SetId(SPCAT_VOICES, FALSE)))
        category->EnumTokens(L"Language=409", nullptr, &voices);
    category->Release();
    if (!voices) return;
    ULONG count = 0;
    ISpObjectToken *english = nullptr;
    if (SUCCEEDED(voices->GetCount(&count)) && count > 0) voices->Next(1, &english, nullptr);
    if (english) {
        voice->SetVoice(english);
        english->Release();
    }
    voices->Release();
}

void createVoice()
{
    ISpVoice *voice = nullptr;
    const HRESULT result =
        CoCreateInstance(CLSID_SpVoice, nullptr, CLSCTX_ALL, IID_ISpVoice, reinterpret_cast<void **>(&voice));
    if (FAILED(result) || !voice) return;
    chooseEnglish(voice);
    speechVoice = voice;
}

void cutSpeech()
{
    if (speechVoice) speechVoice->Speak(nullptr, SPF_ASYNC | SPF_PURGEBEFORESPEAK, nullptr);
}

void releaseVoice()
{
    if (!speechVoice) return;
    speechVoice->Speak(nullptr, SPF_PURGEBEFORESPEAK, nullptr);
    speechVoice->Release();
    speechVoice = nullptr;
}
