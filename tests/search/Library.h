#pragma once

#include <string_view>

namespace tests {

/// A library of some two hundred templates in eight kinds of writing, by folder. A name may be followed by what the
/// document says of itself, behind a "|".
struct LibraryFolder {
    std::string_view category;
    std::string_view templates; ///< one a line
};

inline constexpr LibraryFolder manyScripts[] = {
    {"Letters", "Memo\nMemorandum\nBusiness Memo\nCover Letter\nThank You Letter\nComplaint Letter\n"
                "Letter of Recommendation\nResignation Letter\nReference Letter\nFollow-up Letter\nNewsletter\n"
                "Letterhead Blue\nLetterhead Green\nEnvelope C5\nEnvelope DL\nFax Cover Sheet\nInvitation\n"
                "Condolence Note\nApology\nPress Release"},
    {"Business", "Invoice\nInvoice 2023\nInvoice 2024\nSales Invoice with Tax\nPro-forma Invoice\nCredit Note\n"
                 "Purchase Order\nPurchase Orders Overview\nQuotation\nReceipt\nBusiness Plan\nBusiness Card\n"
                 "Marketing Plan\nProject Plan\nProject Status Report\nMeeting Minutes\nMeeting Agenda\nTimesheet\n"
                 "Expense Report\nEmployee Record|Personnel file; staff"},
    {"Business\\Contracts", "Lease\nSublease\nLoan Agreement\nNon-disclosure Agreement|NDA; confidentiality\n"
                            "Employment Contract\nPartnership Agreement\nPower of Attorney\nBill of Sale\n"
                            "Service Level Agreement|SLA\nFreelance Contract\nTerms and Conditions\nPrivacy Policy"},
    {"Home",
     "Birthday Card\nShopping List\nRecipe\nFamily Tree\nHousehold Budget\nVaccination Record\nMoving Checklist\n"
     "Calendar 2024\nCalendar 2025\nChristmas Card\nGarden Planner\nBook Catalogue\nCar Log\nPet Record\n"
     "Garage Sale Sign"},
    {"Briefe", "Rechnung\nMahnung\nKündigung\nKuendigung Mobilfunk\nBewerbung\nLebenslauf\nÄrztliches Attest\n"
               "Glückwünsche\nEinladung\nWeihnachtsgrüße\nStraßenfest\nMaßaufnahme\nGrußkarte\nÜbergabeprotokoll\n"
               "Mietvertrag|Wohnung; Vermieter\nArbeitszeugnis\nVollmacht\nBrief mit Fenster"},
    {"Français",
     "Lettre de motivation\nFacture\nDevis\nCurriculum vitæ\nReçu\nAttestation d'hébergement\nCrème brûlée\n"
     "Procès-verbal\nÉtat des lieux\nBon de commande\nNoël\nÀ propos\nRésumé"},
    {"Polski i česky", "Faktura VAT\nŻyczenia\nUmowa o pracę\nŁódź - plan\nZaświadczenie\nPříjmový doklad\nŽivotopis\n"
                       "Smlouva o dílo\nÚčtenka\nŠkolní rozvrh"},
    {"Türkçe", "İş başvurusu\nFatura\nSözleşme\nÖzgeçmiş\nDavetiye\nİzin formu"},
    {"Ελληνικά", "Τιμολόγιο\nΑίτηση\nΒιογραφικό σημείωμα\nΣυμβόλαιο\nΠρόσκληση\nΑΠΟΔΕΙΞΗ\nΗμερολόγιο"},
    {"Русский", "Счёт-фактура\nДоговор аренды\nЗаявление\nРезюме\nПриглашение\nДоверенность\nАкт приёмки\nЁлка\n"
                "Отчёт о командировке\nЖурнал учёта"},
    {"日本語",
     "請求書\n請求書_2024年\n見積書\n領収書\n履歴書\n会議議事録\n年賀状\n東京都請求書テンプレート\nプレゼンテーション\n"
     "ﾌﾟﾚｾﾞﾝ資料\nカレンダー\nお礼状\nビジネスレター\nガントチャート\n出張報告書"},
    {"中文", "发票\n合同范本\n个人简历\n会议纪要\n工作总结报告\n请假条\n销售发票模板\n邀请函\n年度预算表\n劳动合同\n"
             "會議紀錄\n履歷表"},
    {"한국어", "견적서\n이력서\n회의록\n사업계획서\n세금계산서\n출장보고서\n초대장\n휴가신청서"},
    {"עברית", "חשבונית מס\nקורות חיים\nהזמנה\nמכתב רשמי\nשָׁלוֹם\nחוזה שכירות"},
    {"العربية", "فاتورة\nسيرة ذاتية\nعقد إيجار\nدعوة\nمُحَمَّد\nرسالة رسمية"},
    {"ไทย", "ใบแจ้งหนี้\nใบเสนอราคา\nประวัติย่อ\nหนังสือเชิญ\nใบเสร็จรับเงิน"},
    {"Wide", "Ｉｎｖｏｉｃｅ　Ｗｉｄｅ\nＭＥＭＯ　２\nＡＢＣ１２３"},
    {"Odd signs", "C++ notes\n100% discount\nPrice & tax\n(draft)\n[final] copy\n+++\na.b\nrock'n'roll\nO'Brien form"},
};

} // namespace tests
