/* A volume for tests under Wine: a driver without a disk. It queues what is asked of \\.\N: for a server
   in user mode and hands the answers back, so that the program's own calls run unchanged from end to
   end. */
/* The second needs the first. */
#include <ntifs.h>

#include <ntdddisk.h>

#include "test_volume.h"

static DEVICE_OBJECT *volumeDevice, *serverDevice;
static KSPIN_LOCK lock;
static LIST_ENTRY waiting; /* requests that the server has not taken, oldest first */
static LIST_ENTRY taken;   /* requests that it has */
static IRP* server;        /* a TEST_VOLUME_GET that waits for a request */
static unsigned long long lastId;
static BOOLEAN isEnding; /* TEST_VOLUME_END came while no server waited */

static NTSTATUS Complete(IRP* irp, NTSTATUS status, ULONG_PTR bytes) {
  irp->IoStatus.Status = status;
  irp->IoStatus.Information = bytes;
  IoCompleteRequest(irp, IO_NO_INCREMENT);
  return status;
}

/* The number of a request is kept where a driver may keep what it likes. */
static unsigned long long* IdOf(IRP* irp) {
  return (unsigned long long*)&irp->Tail.Overlay.DriverContext[0];
}

static void CancelRequest(DEVICE_OBJECT* device, IRP* irp) {
  KIRQL irql;
  (void)device;
  IoReleaseCancelSpinLock(irp->CancelIrql);
  KeAcquireSpinLock(&lock, &irql);
  RemoveEntryList(&irp->Tail.Overlay.ListEntry);
  KeReleaseSpinLock(&lock, irql);
  Complete(irp, STATUS_CANCELLED, 0);
}

static void CancelServer(DEVICE_OBJECT* device, IRP* irp) {
  KIRQL irql;
  (void)device;
  IoReleaseCancelSpinLock(irp->CancelIrql);
  KeAcquireSpinLock(&lock, &irql);
  if (server == irp) server = NULL;
  KeReleaseSpinLock(&lock, irql);
  Complete(irp, STATUS_CANCELLED, 0);
}

/* True if the caller may complete the IRP; else its cancellation has begun, which will. Holds the lock.
 */
static BOOLEAN Claim(IRP* irp) { return IoSetCancelRoutine(irp, NULL) != NULL; }

typedef struct {
  unsigned int code;
  const void* input;
  unsigned int inputBytes;
  void* output;
  unsigned int outputBytes;
  unsigned long long offset;
} Asked;

/* Where a request's bytes are depends on the method in the low two bits of its code. */
static Asked AskedBy(IRP* irp) {
  IO_STACK_LOCATION* stack = IoGetCurrentIrpStackLocation(irp);
  Asked asked;
  RtlZeroMemory(&asked, sizeof asked);
  if (stack->MajorFunction == IRP_MJ_READ) {
    asked.code = TEST_VOLUME_READ;
    asked.output = irp->AssociatedIrp.SystemBuffer ? irp->AssociatedIrp.SystemBuffer
                   : irp->MdlAddress ? MmGetSystemAddressForMdlSafe(irp->MdlAddress, NormalPagePriority)
                                     : irp->UserBuffer;
    asked.outputBytes = stack->Parameters.Read.Length;
    asked.offset = (unsigned long long)stack->Parameters.Read.ByteOffset.QuadPart;
    return asked;
  }
  asked.code = stack->Parameters.DeviceIoControl.IoControlCode;
  asked.inputBytes = stack->Parameters.DeviceIoControl.InputBufferLength;
  asked.outputBytes = stack->Parameters.DeviceIoControl.OutputBufferLength;
  if ((asked.code & 3) == METHOD_NEITHER) {
    asked.input = stack->Parameters.DeviceIoControl.Type3InputBuffer;
    asked.output = irp->UserBuffer;
  } else {
    asked.input = irp->AssociatedIrp.SystemBuffer;
    asked.output = irp->AssociatedIrp.SystemBuffer;
  }
  return asked;
}

/* Hands the oldest request to the server if both wait. Holds the lock; the IRP to complete, or NULL. */
static IRP* Pair(void) {
  IRP *request, *get = server;
  Asked asked;
  TestVolumeRequest* out;
  unsigned long room;
  if (get == NULL || IsListEmpty(&waiting)) return NULL;
  server = NULL;
  if (!Claim(get)) return NULL;
  request = CONTAINING_RECORD(RemoveHeadList(&waiting), IRP, Tail.Overlay.ListEntry);
  InsertTailList(&taken, &request->Tail.Overlay.ListEntry);
  asked = AskedBy(request);
  room = IoGetCurrentIrpStackLocation(get)->Parameters.DeviceIoControl.OutputBufferLength;
  out = get->AssociatedIrp.SystemBuffer;
  if (room < sizeof *out + asked.inputBytes) asked.inputBytes = 0;
  out->id = *IdOf(request);
  out->offset = asked.offset;
  out->code = asked.code;
  out->inputBytes = asked.inputBytes;
  out->outputBytes = asked.outputBytes;
  out->reserved = 0;
  RtlCopyMemory(out + 1, asked.input, asked.inputBytes);
  get->IoStatus.Status = STATUS_SUCCESS;
  get->IoStatus.Information = sizeof *out + asked.inputBytes;
  return get;
}

static NTSTATUS Enqueue(IRP* irp) {
  KIRQL irql;
  IRP* get;
  IoMarkIrpPending(irp);
  KeAcquireSpinLock(&lock, &irql);
  *IdOf(irp) = ++lastId;
  InsertTailList(&waiting, &irp->Tail.Overlay.ListEntry);
  IoSetCancelRoutine(irp, CancelRequest);
  get = Pair();
  KeReleaseSpinLock(&lock, irql);
  if (get != NULL) IoCompleteRequest(get, IO_NO_INCREMENT);
  return STATUS_PENDING;
}

static NTSTATUS GetRequest(IRP* irp) {
  KIRQL irql;
  IRP* get;
  if (IoGetCurrentIrpStackLocation(irp)->Parameters.DeviceIoControl.OutputBufferLength <
      sizeof(TestVolumeRequest))
    return Complete(irp, STATUS_BUFFER_TOO_SMALL, 0);
  KeAcquireSpinLock(&lock, &irql);
  if (isEnding) {
    isEnding = FALSE;
    KeReleaseSpinLock(&lock, irql);
    return Complete(irp, STATUS_END_OF_FILE, 0);
  }
  IoMarkIrpPending(irp);
  server = irp;
  IoSetCancelRoutine(irp, CancelServer);
  get = Pair();
  KeReleaseSpinLock(&lock, irql);
  if (get != NULL) IoCompleteRequest(get, IO_NO_INCREMENT);
  return STATUS_PENDING;
}

static IRP* TakeById(unsigned long long id) {
  LIST_ENTRY* entry;
  for (entry = taken.Flink; entry != &taken; entry = entry->Flink) {
    IRP* irp = CONTAINING_RECORD(entry, IRP, Tail.Overlay.ListEntry);
    if (*IdOf(irp) != id) continue;
    if (!Claim(irp)) return NULL;
    RemoveEntryList(entry);
    return irp;
  }
  return NULL;
}

/* An answer to a request that was cancelled meanwhile is dropped. */
static NTSTATUS Answer(IRP* irp) {
  const TestVolumeAnswer* answer = irp->AssociatedIrp.SystemBuffer;
  const unsigned long length =
      IoGetCurrentIrpStackLocation(irp)->Parameters.DeviceIoControl.InputBufferLength;
  KIRQL irql;
  IRP* request;
  Asked asked;
  if (length < sizeof *answer || answer->outputBytes > length - sizeof *answer)
    return Complete(irp, STATUS_INVALID_PARAMETER, 0);
  KeAcquireSpinLock(&lock, &irql);
  request = TakeById(answer->id);
  KeReleaseSpinLock(&lock, irql);
  if (request == NULL) return Complete(irp, STATUS_NOT_FOUND, 0);
  asked = AskedBy(request);
  if (answer->outputBytes > asked.outputBytes) {
    Complete(request, STATUS_BUFFER_OVERFLOW, 0);
    return Complete(irp, STATUS_SUCCESS, 0);
  }
  RtlCopyMemory(asked.output, answer + 1, answer->outputBytes);
  Complete(request, (NTSTATUS)answer->status, answer->outputBytes);
  return Complete(irp, STATUS_SUCCESS, 0);
}

static NTSTATUS End(IRP* irp) {
  KIRQL irql;
  IRP* get;
  KeAcquireSpinLock(&lock, &irql);
  get = server;
  server = NULL;
  if (get == NULL) isEnding = TRUE;
  if (get != NULL && !Claim(get)) get = NULL;
  KeReleaseSpinLock(&lock, irql);
  if (get != NULL) Complete(get, STATUS_END_OF_FILE, 0);
  return Complete(irp, STATUS_SUCCESS, 0);
}

static NTSTATUS NTAPI OnFile(DEVICE_OBJECT* device, IRP* irp) {
  (void)device;
  return Complete(irp, STATUS_SUCCESS, 0);
}

static NTSTATUS NTAPI OnRead(DEVICE_OBJECT* device, IRP* irp) {
  return device == volumeDevice ? Enqueue(irp) : Complete(irp, STATUS_NOT_SUPPORTED, 0);
}

static NTSTATUS NTAPI OnControl(DEVICE_OBJECT* device, IRP* irp) {
  if (device == volumeDevice) return Enqueue(irp);
  switch (IoGetCurrentIrpStackLocation(irp)->Parameters.DeviceIoControl.IoControlCode) {
    case TEST_VOLUME_GET:
      return GetRequest(irp);
    case TEST_VOLUME_ANSWER:
      return Answer(irp);
    case TEST_VOLUME_END:
      return End(irp);
    default:
      return Complete(irp, STATUS_NOT_SUPPORTED, 0);
  }
}

static NTSTATUS NTAPI OnVolumeInformation(DEVICE_OBJECT* device, IRP* irp) {
  static const WCHAR label[] = L"driven", fileSystem[] = L"NTFS";
  IO_STACK_LOCATION* stack = IoGetCurrentIrpStackLocation(irp);
  const unsigned long room = stack->Parameters.QueryVolume.Length;
  void* out = irp->AssociatedIrp.SystemBuffer;
  (void)device;
  if (stack->Parameters.QueryVolume.FsInformationClass == FileFsVolumeInformation) {
    FILE_FS_VOLUME_INFORMATION* info = out;
    const unsigned long size =
        FIELD_OFFSET(FILE_FS_VOLUME_INFORMATION, VolumeLabel) + sizeof label - sizeof(WCHAR);
    if (room < size) return Complete(irp, STATUS_BUFFER_TOO_SMALL, 0);
    RtlZeroMemory(info, size);
    info->VolumeSerialNumber = 0x12345678;
    info->VolumeLabelLength = sizeof label - sizeof(WCHAR);
    RtlCopyMemory(info->VolumeLabel, label, sizeof label - sizeof(WCHAR));
    return Complete(irp, STATUS_SUCCESS, size);
  }
  if (stack->Parameters.QueryVolume.FsInformationClass == FileFsAttributeInformation) {
    FILE_FS_ATTRIBUTE_INFORMATION* info = out;
    const unsigned long size =
        FIELD_OFFSET(FILE_FS_ATTRIBUTE_INFORMATION, FileSystemName) + sizeof fileSystem - sizeof(WCHAR);
    if (room < size) return Complete(irp, STATUS_BUFFER_TOO_SMALL, 0);
    RtlZeroMemory(info, size);
    info->MaximumComponentNameLength = 255;
    info->FileSystemNameLength = sizeof fileSystem - sizeof(WCHAR);
    RtlCopyMemory(info->FileSystemName, fileSystem, sizeof fileSystem - sizeof(WCHAR));
    return Complete(irp, STATUS_SUCCESS, size);
  }
  if (stack->Parameters.QueryVolume.FsInformationClass == FileFsDeviceInformation) {
    FILE_FS_DEVICE_INFORMATION* info = out;
    if (room < sizeof *info) return Complete(irp, STATUS_BUFFER_TOO_SMALL, 0);
    info->DeviceType = FILE_DEVICE_DISK;
    info->Characteristics = 0;
    return Complete(irp, STATUS_SUCCESS, sizeof *info);
  }
  return Complete(irp, STATUS_NOT_SUPPORTED, 0);
}

static NTSTATUS MakeDevice(DRIVER_OBJECT* driver, const WCHAR* name, const WCHAR* link,
                           DEVICE_OBJECT** device) {
  UNICODE_STRING nameText, linkText;
  NTSTATUS status;
  RtlInitUnicodeString(&nameText, name);
  RtlInitUnicodeString(&linkText, link);
  status = IoCreateDevice(driver, 0, &nameText, FILE_DEVICE_DISK, 0, FALSE, device);
  if (status != STATUS_SUCCESS) return status;
  IoDeleteSymbolicLink(&linkText);
  return IoCreateSymbolicLink(&linkText, &nameText);
}

static void NTAPI Unload(DRIVER_OBJECT* driver) {
  UNICODE_STRING link;
  (void)driver;
  RtlInitUnicodeString(&link, L"\\??\\N:");
  IoDeleteSymbolicLink(&link);
  RtlInitUnicodeString(&link, L"\\??\\QuilmarkTestVolume");
  IoDeleteSymbolicLink(&link);
  IoDeleteDevice(volumeDevice);
  IoDeleteDevice(serverDevice);
}

NTSTATUS NTAPI DriverEntry(DRIVER_OBJECT* driver, UNICODE_STRING* path) {
  NTSTATUS status;
  (void)path;
  KeInitializeSpinLock(&lock);
  InitializeListHead(&waiting);
  InitializeListHead(&taken);
  driver->DriverUnload = Unload;
  driver->MajorFunction[IRP_MJ_CREATE] = OnFile;
  driver->MajorFunction[IRP_MJ_CLOSE] = OnFile;
  driver->MajorFunction[IRP_MJ_CLEANUP] = OnFile;
  driver->MajorFunction[IRP_MJ_READ] = OnRead;
  driver->MajorFunction[IRP_MJ_DEVICE_CONTROL] = OnControl;
  driver->MajorFunction[IRP_MJ_FILE_SYSTEM_CONTROL] = OnControl;
  driver->MajorFunction[IRP_MJ_QUERY_VOLUME_INFORMATION] = OnVolumeInformation;
  status = MakeDevice(driver, L"\\Device\\QuilmarkTestVolume", L"\\??\\N:", &volumeDevice);
  if (status != STATUS_SUCCESS) return status;
  return MakeDevice(driver, L"\\Device\\QuilmarkTestServer", L"\\??\\QuilmarkTestVolume", &serverDevice);
}
