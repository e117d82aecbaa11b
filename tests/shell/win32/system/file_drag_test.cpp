#include "shell/win32/system/file_drag.h"

#include <gtest/gtest.h>

#include <ole2.h>
#include <shellapi.h>

#include "platform/win32/wide.h"
#include "shell/win32/system/clipboard_files.h"

namespace quilmark {
namespace {

FORMATETC FilesFormat() { return {CF_HDROP, nullptr, DVASPECT_CONTENT, -1, TYMED_HGLOBAL}; }
FORMATETC EffectFormat() {
  FORMATETC format = FilesFormat();
  format.cfFormat = static_cast<CLIPFORMAT>(DropEffectFormat());
  return format;
}

ULONG ReferencesOf(IUnknown* object) {
  object->AddRef();
  return object->Release();
}

// Formats that differ from an offered one in a single field.
std::vector<FORMATETC> OtherFormats() {
  std::vector<FORMATETC> formats(4, FilesFormat());
  formats[0].cfFormat = CF_TEXT;
  formats[1].dwAspect = DVASPECT_ICON;
  formats[2].lindex = 0;
  formats[3].tymed = TYMED_ISTREAM;
  return formats;
}

TEST(FileData, GivesTheFilesAndACopy) {
  const auto data = MakeFileData({u"C:\\a", u"C:\\b c"});
  FORMATETC format = FilesFormat();
  STGMEDIUM medium = {};
  ASSERT_EQ(data.Get()->GetData(&format, &medium), S_OK);
  EXPECT_EQ(medium.tymed, static_cast<DWORD>(TYMED_HGLOBAL));
  EXPECT_EQ(medium.pUnkForRelease, nullptr);
  EXPECT_EQ(DragQueryFileW(static_cast<HDROP>(medium.hGlobal), 0xFFFF'FFFF, nullptr, 0), 2u);
  ReleaseStgMedium(&medium);

  format = EffectFormat();
  ASSERT_EQ(data.Get()->GetData(&format, &medium), S_OK);
  EXPECT_EQ(*static_cast<const DWORD*>(GlobalLock(medium.hGlobal)), static_cast<DWORD>(DROPEFFECT_COPY));
  GlobalUnlock(medium.hGlobal);
  ReleaseStgMedium(&medium);
}

TEST(FileData, OffersNothingElse) {
  const auto data = MakeFileData({u"C:\\a"});
  for (FORMATETC format : OtherFormats()) {
    STGMEDIUM medium = {};
    EXPECT_EQ(data.Get()->GetData(&format, &medium), DV_E_FORMATETC);
    EXPECT_EQ(data.Get()->QueryGetData(&format), DV_E_FORMATETC);
  }
  FORMATETC files = FilesFormat(), effect = EffectFormat();
  EXPECT_EQ(data.Get()->QueryGetData(&files), S_OK);
  EXPECT_EQ(data.Get()->QueryGetData(&effect), S_OK);
  files.tymed = TYMED_ISTREAM | TYMED_HGLOBAL;
  EXPECT_EQ(data.Get()->QueryGetData(&files), S_OK) << "any of these will do for whoever asks";
}

TEST(FileData, HasNothingToGiveWithoutAFile) {
  const auto data = MakeFileData({});
  FORMATETC format = FilesFormat();
  STGMEDIUM medium = {};
  EXPECT_EQ(data.Get()->GetData(&format, &medium), STG_E_MEDIUMFULL);
}

TEST(FileData, ListsWhatItOffers) {
  const auto data = MakeFileData({u"C:\\a"});
  IEnumFORMATETC* made = nullptr;
  EXPECT_EQ(data.Get()->EnumFormatEtc(DATADIR_SET, &made), E_NOTIMPL);
  EXPECT_EQ(made, nullptr);
  ASSERT_EQ(data.Get()->EnumFormatEtc(DATADIR_GET, &made), S_OK);
  const UniqueCom<IEnumFORMATETC> formats(made);
  FORMATETC listed[3] = {};
  ULONG fetched = 9;
  EXPECT_EQ(made->Next(3, listed, &fetched), S_FALSE);
  EXPECT_EQ(fetched, 2u);
  EXPECT_EQ(listed[0].cfFormat, CF_HDROP);
  EXPECT_EQ(listed[1].cfFormat, DropEffectFormat());
  for (int i = 0; i < 2; ++i) EXPECT_EQ(data.Get()->QueryGetData(&listed[i]), S_OK);
}

TEST(FileData, ListsThemFromWhereItStands) {
  const auto data = MakeFileData({u"C:\\a"});
  IEnumFORMATETC* made = nullptr;
  ASSERT_EQ(data.Get()->EnumFormatEtc(DATADIR_GET, &made), S_OK);
  const UniqueCom<IEnumFORMATETC> formats(made);
  FORMATETC listed = {};
  EXPECT_EQ(made->Next(2, &listed, nullptr), E_INVALIDARG) << "nobody would know how many";
  EXPECT_EQ(made->Skip(1), S_OK);
  IEnumFORMATETC* copied = nullptr;
  ASSERT_EQ(made->Clone(&copied), S_OK);
  const UniqueCom<IEnumFORMATETC> copy(copied);
  EXPECT_EQ(made->Next(1, &listed, nullptr), S_OK);
  EXPECT_EQ(listed.cfFormat, DropEffectFormat());
  EXPECT_EQ(made->Next(1, &listed, nullptr), S_FALSE);
  EXPECT_EQ(made->Skip(1), S_FALSE);
  listed = {};
  EXPECT_EQ(copied->Next(1, &listed, nullptr), S_OK) << "stands where the other one stood";
  EXPECT_EQ(listed.cfFormat, DropEffectFormat());
  EXPECT_EQ(copied->Skip(3), S_FALSE);
  EXPECT_EQ(copied->Reset(), S_OK);
  EXPECT_EQ(copied->Next(1, &listed, nullptr), S_OK);
  EXPECT_EQ(listed.cfFormat, CF_HDROP);
}

TEST(FileData, DoesNothingMore) {
  const auto data = MakeFileData({u"C:\\a"});
  FORMATETC format = FilesFormat(), canonical = FilesFormat();
  STGMEDIUM medium = {};
  EXPECT_EQ(data.Get()->GetDataHere(&format, &medium), E_NOTIMPL);
  EXPECT_EQ(data.Get()->SetData(&format, &medium, FALSE), E_NOTIMPL);
  EXPECT_EQ(data.Get()->DAdvise(&format, 0, nullptr, nullptr), E_NOTIMPL);
  EXPECT_EQ(data.Get()->DUnadvise(0), E_NOTIMPL);
  EXPECT_EQ(data.Get()->EnumDAdvise(nullptr), E_NOTIMPL);
  EXPECT_EQ(data.Get()->GetCanonicalFormatEtc(&format, &canonical), E_NOTIMPL);
}

template <typename Interface>
void ExpectCounts(const UniqueCom<Interface>& object, REFIID id) {
  EXPECT_EQ(ReferencesOf(object.Get()), 1u);
  for (const IID& known : {IID_IUnknown, id}) {
    void* same = nullptr;
    ASSERT_EQ(object.Get()->QueryInterface(known, &same), S_OK);
    EXPECT_EQ(same, object.Get());
    EXPECT_EQ(ReferencesOf(object.Get()), 2u);
    EXPECT_EQ(object.Get()->Release(), 1u);
  }
  void* other = &other;
  EXPECT_EQ(object.Get()->QueryInterface(IID_IStream, &other), E_NOINTERFACE);
  EXPECT_EQ(other, nullptr);
  EXPECT_EQ(object.Get()->QueryInterface(id, nullptr), E_POINTER);
  EXPECT_EQ(ReferencesOf(object.Get()), 1u);
}

TEST(FileDrag, CountsReferencesFromOne) {
  const auto data = MakeFileData({u"C:\\a"});
  ExpectCounts(data, IID_IDataObject);
  ExpectCounts(MakeFileDropSource(), IID_IDropSource);
  IEnumFORMATETC* formats = nullptr;
  ASSERT_EQ(data.Get()->EnumFormatEtc(DATADIR_GET, &formats), S_OK);
  ExpectCounts(UniqueCom<IEnumFORMATETC>(formats), IID_IEnumFORMATETC);
  EXPECT_EQ(ReferencesOf(data.Get()), 1u) << "the list of formats does not hold it";
}

TEST(FileDropSource, DropsWhereTheButtonIsLetGo) {
  const auto source = MakeFileDropSource();
  EXPECT_EQ(source.Get()->QueryContinueDrag(FALSE, MK_LBUTTON), S_OK);
  EXPECT_EQ(source.Get()->QueryContinueDrag(FALSE, MK_LBUTTON | MK_CONTROL), S_OK);
  EXPECT_EQ(source.Get()->QueryContinueDrag(FALSE, MK_RBUTTON), DRAGDROP_S_DROP);
  EXPECT_EQ(source.Get()->QueryContinueDrag(TRUE, MK_LBUTTON), DRAGDROP_S_CANCEL);
  EXPECT_EQ(source.Get()->QueryContinueDrag(TRUE, 0), DRAGDROP_S_CANCEL);
  EXPECT_EQ(source.Get()->GiveFeedback(DROPEFFECT_COPY), DRAGDROP_S_USEDEFAULTCURSORS);
}

TEST(FileDrag, NeedsAFile) { EXPECT_FALSE(DragFiles({})); }

}  // namespace
}  // namespace quilmark
