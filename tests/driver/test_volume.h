/* What the test driver and the server in the test program say to each other. The server opens
   \\.\QuilmarkTestVolume and asks for one request after another; whatever a program asks of \\.\N:
   becomes such a request and waits until the server has answered or it is cancelled. */
#pragma once

#define TEST_VOLUME_GET 0x222000u    /* out: TestVolumeRequest and its input; waits for one */
#define TEST_VOLUME_ANSWER 0x222004u /* in: TestVolumeAnswer and the output */
#define TEST_VOLUME_END 0x22200Cu    /* ends a waiting TEST_VOLUME_GET with an error */

#define TEST_VOLUME_READ 1u /* code of a request to read bytes */

typedef struct {
  unsigned long long id;
  unsigned long long offset; /* of a read */
  unsigned int code;         /* an FSCTL, or TEST_VOLUME_READ */
  unsigned int inputBytes;   /* they follow */
  unsigned int outputBytes;  /* room for the answer */
  unsigned int reserved;
} TestVolumeRequest;

typedef struct {
  unsigned long long id;
  unsigned int status; /* an NTSTATUS */
  unsigned int outputBytes;
} TestVolumeAnswer;
