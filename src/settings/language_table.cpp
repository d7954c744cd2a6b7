#include "settings/language_table.h"

#include <algorithm>
#include <iterator>

// Some umlauts and accents are written as plain letters, and only Japanese and English mention the Esc key.
static constexpr struct {
    std::wstring_view name, prefix;
    int windowsPrimary;  // primary part of the Windows language identifier
    LabelSet labels;
} languages[] = {
    {L"japanese", L"ja", 0x11,
     LabelSet{
         .stampTitle = L"すたんぷ",
         .eraserTitle = L"けしごむ",
         .doodleTitle = L"らくがき",
         .stampSubtitle = L"にこちゃん・おひさま が どーん!",
         .eraserSubtitle = L"さいしょからやりなおす",
         .doodleSubtitle = L"なにか\u3000えを\u3000かくね",
         .purchaseLine = L"気に入ったら購入をお願いします。",
         .hintHeading = L"おうちのひとへ",
         .hintBody = L"終了するときは Alt キーを押しながら F4 キーを おしてください。\n"
                     L"画面をクリアするには Esc キーを押してください。",
         .hintOptOut = L"覚えたので、次回から表示しない",
     }},
    {L"english", L"en", 0x09,
     LabelSet{
         .stampTitle = L"STAMP",
         .eraserTitle = L"ERASER",
         .doodleTitle = L"DOODLE",
         .stampSubtitle = L"Smiley, rainbow pop!",
         .eraserSubtitle = L"Start over",
         .doodleSubtitle = L"Draws something bit by bit",
         .purchaseLine = L"If you enjoy it, please support by purchasing.",
         .hintHeading = L"For grown-ups",
         .hintBody = L"To quit, hold Alt and press F4.\nPress Esc to clear the screen.",
         .hintOptOut = L"Got it — don't show this again",
     }},
    {L"chinese", L"zh", 0x04,
     LabelSet{
         .stampTitle = L"印章",
         .eraserTitle = L"橡皮擦",
         .doodleTitle = L"涂鸦",
         .stampSubtitle = L"笑脸和彩虹，啪地一下出现！",
         .eraserSubtitle = L"从头再来",
         .doodleSubtitle = L"会画出点什么哦",
         .purchaseLine = L"如果你喜欢这个应用，欢迎购买支持。",
         .hintHeading = L"给家里的家长",
         .hintBody = L"要退出时，请同时按住 Alt 键和 F4 键",
         .hintOptOut = L"记住了，下次不再显示",
     }},
    {L"french", L"fr", 0x0C,
     LabelSet{
         .stampTitle = L"Tampon",
         .eraserTitle = L"Gomme",
         .doodleTitle = L"Gribouillage",
         .stampSubtitle = L"Sourire et arc-en-ciel, pop !",
         .eraserSubtitle = L"Tout recommencer",
         .doodleSubtitle = L"On dessine quelque chose",
         .purchaseLine = L"Si l'application vous plaît, merci de nous soutenir en l'achetant.",
         .hintHeading = L"A la maison",
         .hintBody = L"Pour quitter, maintenez Alt et appuyez sur F4 en meme temps.",
         .hintOptOut = L"Compris — ne plus afficher",
     }},
    {L"italian", L"it", 0x10,
     LabelSet{
         .stampTitle = L"Timbro",
         .eraserTitle = L"Gomma",
         .doodleTitle = L"Scarabocchio",
         .stampSubtitle = L"Faccina e arcobaleno, che botto!",
         .eraserSubtitle = L"Ricomincia da capo",
         .doodleSubtitle = L"Disegna qualcosa, piano piano",
         .purchaseLine = L"Se ti piace l'app, valuta l'acquisto per supportarla.",
         .hintHeading = L"A chi e a casa",
         .hintBody = L"Per uscire, tieni premuto Alt e premi F4 insieme.",
         .hintOptOut = L"Capito — non mostrare più",
     }},
    {L"german", L"de", 0x07,
     LabelSet{
         .stampTitle = L"Stempel",
         .eraserTitle = L"Radierer",
         .doodleTitle = L"Kritzelei",
         .stampSubtitle = L"Smiley und Regenbogen - bumm!",
         .eraserSubtitle = L"Von vorne anfangen",
         .doodleSubtitle = L"Es wird etwas gemalt",
         .purchaseLine = L"Wenn dir die App gefaellt, unterstuetze uns bitte mit einem Kauf.",
         .hintHeading = L"Fuer die Erwachsenen zu Hause",
         .hintBody = L"Zum Beenden Alt und F4 gleichzeitig druecken.",
         .hintOptOut = L"Verstanden — nicht mehr anzeigen",
     }},
    {L"spanish", L"es", 0x0A,
     LabelSet{
         .stampTitle = L"Sello",
         .eraserTitle = L"Goma",
         .doodleTitle = L"Garabato",
         .stampSubtitle = L"Carita y arcoiris, boom!",
         .eraserSubtitle = L"Empezar de nuevo",
         .doodleSubtitle = L"Dibuja algo poco a poco",
         .purchaseLine = L"Si te gusta la aplicacion, por favor apoyanos comprandola.",
         .hintHeading = L"Para quienes estan en casa",
         .hintBody = L"Para salir, manten Alt y pulsa F4 al mismo tiempo.",
         .hintOptOut = L"Entendido — no volver a mostrar",
     }},
};

const LabelSet &labelsIn(int language)
{
    return languages[language].labels;
}

int languageOfWindows(uint16_t identifier)
{
    const int primary = identifier & 0x3FF;
    const int region = identifier >> 10;
    // Only China and Singapore write the Simplified forms; readers of the Traditional ones get English.
    if (primary == languages[chinese].windowsPrimary && region != 2 && region != 4) return english;
    for (int i = 0; i < int(std::size(languages)); ++i) {
        if (primary == languages[i].windowsPrimary) return i;
    }
    return english;
}

std::wstring trimWhitespace(const std::wstring &text)
{
    const wchar_t *blanks = L"\t\n\r ";
    const size_t first = text.find_first_not_of(blanks);
    if (first == std::wstring::npos) return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

// Any word that begins with the two letters counts, so locale names such as en-GB work too.
bool parseLanguageOverride(const std::wstring &language, int &index)
{
    std::wstring text = trimWhitespace(language);
    std::transform(text.begin(), text.end(), text.begin(),
                   [](wchar_t c) { return c >= L'A' && c <= L'Z' ? wchar_t(c - L'A' + L'a') : c; });
    for (int i = 0; i < int(std::size(languages)); ++i) {
        const bool simplified = i == chinese && text == L"simplified chinese";
        if (text != languages[i].name && !text.starts_with(languages[i].prefix) && !simplified) continue;
        index = i;
        return true;
    }
    return false;
}
