#pragma once

#include <cstdint>

/// Names for the string numbers that the code asks for. Captions stand as plain numbers where a control is declared.
namespace app::str {

inline constexpr std::uint16_t FileNotFound = 126, PreviousInstance = 140, TabAll = 159, TemplateNotFound = 169,
                               TemplatesAvailable = 170, SetValueFailed = 173, EnumerationFailed = 174,
                               DeleteValueFailed = 182, NoPreview = 256, Empty = 154, DriveNotAccessible = 272,
                               TemplatesPathInvalid = 273, UnableToRun = 274, TemplatesNotAccessible = 275,
                               ResolutionTooLow = 277, ThumbnailsUnavailable = 278, NoTemplateFolders = 279,
                               HelpFilesMissing = 280, CdPathPrompt = 340, TemplatesPathUnreadable = 336,
                               CancelQuits = 337, SelectedPathUnreadable = 338, MyFavorites = 365,
                               HelpUnavailable = 367, TemplatesPath = 321, HddPathPrompt = 319,
                               PathFileAccessError = 223, Office2K = 368, Office97 = 369, OfficeXp = 370,
                               Office11 = 533, RecentDocumentsSearch = 377, CreateNew = 385, GetMoreTemplates = 388,
                               ProductCaption = 360, SettingsAppName = 362, ProductName = 390,
                               InitSettingsUnreadable = 512, InitSettingsReason = 513, InitSettingsAdvice = 514,
                               PleaseWait = 491, BrowserLoads = 492, PercentDone = 493, Reinstall = 532, EBook = 534,
                               ReportABug = 524, InvalidNumber = 106, DeleteTopLevel = 259, DeleteFolderQuestion = 260,
                               DeleteFolderContents = 261, RenameTopLevel = 262, AlreadyFavorite = 269,
                               FolderNameTooLong = 284, EnterFolderName = 347, DropRefused = 356,
                               RemoveFavoriteQuestion = 357, RecentDocumentsKey = 378, LaunchDocumentFailed = 391,
                               FolderNameCharacters = 397, FolderNameStart = 398, CannotRename = 399,
                               FolderNameTaken = 400, DragFromPreview = 403, HistoryPeriod = 481, DeleteFailed = 515,
                               CloseTemplates = 516, RenameFailed = 519, RenameWithFindPane = 521, CloseFindPane = 522,
                               DeleteWithFindPane = 523, DropOnlyFavorites = 531, NoProperties = 281,
                               ConfirmTemplateExists = 282, Bytes = 691, NoVersionInfo = 162, Spreadsheet = 698,
                               PdfConverter = 699, UnableToLaunch = 545, ClearRecentQuestion = 565,
                               LaunchedNameEnd = 566, NotAbleToLaunchEnd = 571;

inline constexpr std::uint16_t EmptyLibraryQuestion = 600, HiddenNameQuestion = 601, FolderNameEnd = 602,
                               FolderNameDevice = 603, TemplatesToDelete = 604, TemplateToDelete = 605,
                               TemplateItselfOpened = 606, TemplateAvailable = 607, WithoutPicture = 608,
                               MoreWithoutPicture = 609, WithoutPictureAreHidden = 611, OtherTypesHere = 612,
                               AddedToFavorites = 613, NoFavorites = 614;

inline constexpr std::uint16_t Searching = 178, NothingFound = 179, CriteriaIncomplete = 181, Found = 187,
                               FoundFrom = 188, FoundFiles = 189, SearchAll = 190, SearchSelected = 191,
                               NoFindInFavorites = 263, NoFindHere = 371, SearchOtherTypes = 700, PreviewCaption = 243,
                               PreviewOf = 254, PreviewTemplates = 255, CopyFailed = 706, TextCopyFailed = 712,
                               Preview = 563;

inline constexpr std::uint16_t CtrlKey = 722, ShiftKey = 723, EnterKey = 724, DeleteKey = 725, NoRecentDocuments = 726,
                               DoesNotAnswer = 713, FolderDoesNotAnswer = 714, WaitsFor = 715;

} // namespace app::str
